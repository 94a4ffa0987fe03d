#include "RequestChannel.h"
#include "StreamDictionary.h"

#include <voro/mmr.h>

#include <renderer/common/Protocol.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

using voro::pps::appendNumber;
using voro::pps::appendText;
using namespace voro::renderer;

struct mmr_connection {
    RequestChannel service;
};

struct mmr_context {
    mmr_connection_t *connection;
    RequestChannel control;
    std::string name;
    std::string path;
    /** The request that makes it again, while it is gone with its daemon. */
    std::string again;
    mmr_error_info_t error{};
    bool hasFailed = false;
};

namespace {

int finish(mmr_context_t &context, const Result &result)
{
    context.error = {};
    if (result) {
        return 0;
    }
    context.hasFailed = true;
    context.error.error_code = static_cast<uint32_t>(result.code);
    const size_t length = std::min(result.text.size(), sizeof context.error.extra_text - 1);
    std::memcpy(context.error.extra_text, result.text.data(), length);
    return -1;
}

/** Asks the service, which is looked for anew when the daemon went. */
Result callService(mmr_connection_t &connection, std::string_view command, std::string_view lines)
{
    constexpr int Attempts = 3;
    Result result = connection.service.call(command, lines);
    for (int i = 0; i < Attempts && connection.service.isUnsent() && connection.service.open(ServicePath); ++i) {
        result = connection.service.call(command, lines);
    }
    return result;
}

/** Where this application's windows are: the renderer does not know its session. */
std::string sessionLines()
{
    std::string lines;
    for (const auto &[name, variable] : {std::pair(DisplayName, "DISPLAY"), {AuthorityName, "XAUTHORITY"}}) {
        if (const char *value = std::getenv(variable)) {
            appendText(lines, name, value);
        }
    }
    return lines;
}

/** The lost daemon's knowledge of the context, as a request to make it again. */
std::string requestAgain(const mmr_context_t &context)
{
    const voro::pps::Connection &control = context.control.connection();
    std::string lines;
    appendText(lines, "name", context.name);
    lines += control.returnText() + sessionLines();
    if (!control.returnText().empty()) {
        appendText(lines, "will", control.folderWill());
    }
    return lines;
}

/** Makes a context again that went with its daemon. */
Result restore(mmr_context_t &context)
{
    if (context.again.empty()) {
        context.again = requestAgain(context);
    }
    const Result result = callService(*context.connection, "context_create", context.again);
    if (!result) {
        return result;
    }
    // Readers that have not learned of the loss yet read the present.
    context.control.connection().dropFolderWill();
    context.again.clear();
    return context.control.open(context.path + "/control") ? Result()
                                                           : Result(ErrorCode::Internal, "the renderer is gone");
}

int call(mmr_context_t *context, std::string_view command, std::string_view lines = {})
{
    if (!context) {
        return -1;
    }
    Result result = context->control.call(command, lines);
    if (context->control.isUnsent()) {
        result = restore(*context);
        if (result) {
            result = context->control.call(command, lines);
        }
    }
    return finish(*context, result);
}

int refuse(mmr_context_t *context, const char *cause)
{
    return context ? finish(*context, {ErrorCode::InvalidParameter, cause}) : -1;
}

/** Sends a dictionary, which is consumed in any case, after the lines that say what it is for. */
int callWith(mmr_context_t *context, std::string_view command, std::string lines, strm_dict_t *parameters)
{
    const OwnedDictionary dictionary(parameters);
    if (!dictionary) {
        return refuse(context, "no dictionary");
    }
    for (const auto &[name, value] : dictionary->parameters.entries()) {
        if (!voro::pps::isValidName(name)) {
            return refuse(context, "a parameter's name is no name");
        }
    }
    appendText(lines, "dat", dictionary->parameters.toText());
    return call(context, command, lines);
}

int attach(mmr_context_t *context, std::string_view command, const char *url, const char *type, std::string lines = {})
{
    if (!url || !type) {
        return refuse(context, "no URL or type");
    }
    appendText(lines, "url", url);
    appendText(lines, "type", type);
    return call(context, command, lines);
}

std::string numberLine(std::string_view name, int64_t value)
{
    std::string line;
    appendNumber(line, name, value);
    return line;
}

} // namespace

mmr_connection_t *mmr_connect(const char *)
{
    auto connection = std::make_unique<mmr_connection_t>();
    return connection->service.open(ServicePath) ? connection.release() : nullptr;
}

void mmr_disconnect(mmr_connection_t *connection)
{
    delete connection;
}

mmr_context_t *mmr_context_create(mmr_connection_t *connection, const char *name, unsigned flags, mode_t mode)
{
    if (!connection || !name) {
        errno = EINVAL;
        return nullptr;
    }
    std::string lines;
    appendText(lines, "name", name);
    appendNumber(lines, "flags", flags);
    appendNumber(lines, "mode", mode);
    lines += sessionLines();
    auto context = std::make_unique<mmr_context_t>();
    context->connection = connection;
    context->name = name;
    if (!callService(*connection, "context_create", lines)) {
        errno = EINVAL;
        return nullptr;
    }
    context->path = connection->service.answer().text("path");
    if (!context->control.open(context->path + "/control")) {
        mmr_context_destroy(context.release());
        errno = EIO;
        return nullptr;
    }
    return context.release();
}

int mmr_context_destroy(mmr_context_t *context)
{
    if (!context) {
        return 0;
    }
    const std::unique_ptr<mmr_context_t> owned(context);
    std::string lines;
    appendText(lines, "name", context->name);
    RequestChannel &service = context->connection->service;
    // A context that went with its daemon is gone.
    return service.call("context_destroy", lines) || service.isUnsent() ? 0 : -1;
}

ssize_t mmr_context_path(mmr_context_t *context, char *buffer, size_t length)
{
    if (!context || !buffer || length <= context->path.size()) {
        return -1;
    }
    std::memcpy(buffer, context->path.c_str(), context->path.size() + 1);
    return static_cast<ssize_t>(context->path.size());
}

int mmr_context_parameters(mmr_context_t *context, strm_dict_t *parameters)
{
    return callWith(context, "context_parameters", {}, parameters);
}

int mmr_input_attach(mmr_context_t *context, const char *url, const char *type)
{
    return attach(context, "input_attach", url, type);
}

int mmr_input_detach(mmr_context_t *context)
{
    return call(context, "input_detach");
}

int mmr_input_parameters(mmr_context_t *context, strm_dict_t *parameters)
{
    return callWith(context, "input_parameters", {}, parameters);
}

int mmr_output_attach(mmr_context_t *context, const char *url, const char *type)
{
    const bool isScreen = url && std::string_view(url).starts_with(ScreenScheme);
    return attach(context, "output_attach", url, type, isScreen ? sessionLines() : std::string()) == 0
               ? static_cast<int>(context->control.answer().number("output", -1))
               : -1;
}

int mmr_output_detach(mmr_context_t *context, int output)
{
    return call(context, "output_detach", numberLine("output", output));
}

int mmr_output_parameters(mmr_context_t *context, int output, strm_dict_t *parameters)
{
    return callWith(context, "output_parameters", numberLine("output", output), parameters);
}

int mmr_play(mmr_context_t *context)
{
    return call(context, "play");
}

int mmr_stop(mmr_context_t *context)
{
    return call(context, "stop");
}

int mmr_seek(mmr_context_t *context, const char *position)
{
    if (!position) {
        return refuse(context, "no position");
    }
    std::string lines;
    appendText(lines, "position", position);
    return call(context, "seek", lines);
}

int mmr_speed_set(mmr_context_t *context, int speed)
{
    return call(context, "speed_set", numberLine("speed", speed));
}

int mmr_track_parameters(mmr_context_t *context, unsigned track, strm_dict_t *parameters)
{
    return callWith(context, "track_parameters", numberLine("track", track), parameters);
}

const mmr_error_info_t *mmr_error_info(mmr_context_t *context)
{
    return context && context->hasFailed ? &context->error : nullptr;
}
