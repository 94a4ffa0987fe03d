#include "WorkerMessages.h"

#include "Fields.h"

#include <array>

namespace voro::renderer {

namespace {

constexpr auto RequestNames =
    std::to_array<std::string_view>({"open", "set", "play", "speed", "seek", "stop", "close", "ping"});
static_assert(RequestNames.size() == std::variant_size_v<Request>);

constexpr auto EventNames =
    std::to_array<std::string_view>({"status", "track", "queue", "silent", "speed", "ended", "failed"});
static_assert(EventNames.size() == std::variant_size_v<Event>);

template<typename Message, size_t Index = 0>
std::optional<Message> parse(const auto &names, const pps::Message &message)
{
    if constexpr (Index < std::variant_size_v<Message>) {
        return message.text("msg") == names[Index] ? parseFields<std::variant_alternative_t<Index, Message>>(message)
                                                   : parse<Message, Index + 1>(names, message);
    }
    return std::nullopt;
}

/** The attribute lines of an event that are a track's metadata. */
std::string metadataLines(std::string_view text)
{
    std::string result;
    pps::LineReader reader(text);
    for (pps::Line line; reader.next(line);) {
        const bool isOurs = line.kind == pps::Line::Kind::Attribute && line.name != "msg" && line.name != "track";
        if (isOurs && line.mark == 0 && result.size() + line.whole.size() < MaximumMetadata) {
            result.append(line.whole).append("\n");
        }
    }
    return result;
}

} // namespace

std::string toText(const Request &request, int64_t id)
{
    const std::string text = beginRequest(RequestNames[request.index()], id);
    return text + std::visit([](const auto &kind) { return fieldsOf(kind); }, request);
}

std::optional<Request> parseRequest(const pps::Message &message)
{
    return parse<Request>(RequestNames, message);
}

std::string toText(const Event &event)
{
    std::string text;
    pps::appendText(text, "msg", EventNames[event.index()]);
    text += std::visit([](const auto &kind) { return fieldsOf(kind); }, event);
    const auto *track = std::get_if<events::Track>(&event);
    return track ? text + track->metadata : text;
}

std::optional<Event> parseEvent(const pps::Message &message, std::string_view text)
{
    auto event = parse<Event>(EventNames, message);
    if (auto *track = event ? std::get_if<events::Track>(&*event) : nullptr) {
        track->metadata = metadataLines(text);
    }
    return event;
}

} // namespace voro::renderer
