#include "RendererService.h"

#include <renderer/common/Protocol.h>

#include <algorithm>

namespace voro::renderer {

namespace {

/** The context's folder: what cannot stand in a path becomes "_", and so does a dot in front. */
std::string folderOf(const std::string &name)
{
    std::string path(ContextFolder);
    for (const unsigned char c : name) {
        const bool isPlain = c < 128 && (isalnum(c) || c == '_' || c == '-' || (c == '.' && path.back() != '/'));
        path += isPlain ? static_cast<char>(c) : '_';
    }
    return path;
}

} // namespace

RendererService::RendererService(pps::Broker &broker) : m_broker(broker), m_workers(broker), m_parking(broker)
{
    m_broker.serve(ServicePath, this);
}

RendererService::~RendererService()
{
    m_broker.unserve(ServicePath);
}

void RendererService::clientMessage(pps::ClientId client, std::string_view text)
{
    pps::Message message;
    if (!message.parse(text)) {
        return;
    }
    const std::string command = message.text("msg");
    const std::string name = message.text("name");
    std::string line;
    Result result{ErrorCode::InvalidParameter, "unknown command " + command};
    if (command == "context_create") {
        result = create(client, message, line);
    } else if (command == "context_destroy") {
        result = destroy(client, name);
    }
    m_broker.send(client, answer(command, message.number("id"), result).append(line));
}

Result RendererService::create(pps::ClientId client, const pps::Message &message, std::string &line)
{
    const std::string name = message.text("name");
    if (name.empty() || name.size() > MaximumContextName) {
        return {ErrorCode::InvalidParameter, "the name is no name of a context"};
    }
    const std::string folder = folderOf(name);
    if (m_contexts.contains(folder)) {
        return {ErrorCode::ResourceUnavailable, "the name is taken"};
    }
    const pid_t process = m_clients.at(client);
    auto charge = m_broker.accounts().take(process, pps::Resource::Contexts);
    if (!charge.isValid()) {
        return {ErrorCode::ResourceUnavailable, "the process has too many contexts"};
    }
    auto context = std::make_unique<Context>(m_broker, m_workers, m_parking, folder, process);
    if (!context->isServed()) {
        return {ErrorCode::ResourceUnavailable, "the name is taken"};
    }
    if (message.has("speed")) {
        context->restore(message);
    }
    pps::appendText(line, "path", context->path());
    context->onIdle([this] { contextIdle(); });
    m_contexts[folder] = {std::move(charge), client, name, std::move(context)};
    m_workers.setContexts(m_contexts.size());
    return {};
}

Result RendererService::destroy(pps::ClientId client, const std::string &name)
{
    const auto found = m_contexts.find(folderOf(name));
    if (found == m_contexts.end() || found->second.owner != client || found->second.name != name) {
        return {ErrorCode::InvalidParameter, "there is no such context"};
    }
    m_contexts.erase(found);
    contextsEnded();
    return {};
}

bool RendererService::isIdle() const
{
    return std::none_of(m_contexts.begin(), m_contexts.end(),
                        [](const auto &entry) { return entry.second.context->hasMedium(); });
}

void RendererService::contextsEnded()
{
    m_workers.setContexts(m_contexts.size());
    contextIdle();
}

void RendererService::contextIdle() const
{
    if (m_onIdle) {
        m_onIdle();
    }
}

void RendererService::clientClosed(pps::ClientId client)
{
    m_clients.erase(client);
    std::erase_if(m_contexts, [client](const auto &entry) { return entry.second.owner == client; });
    contextsEnded();
}

} // namespace voro::renderer
