#include "Application.h"

#include <QtCore/QFile>

#include <pps/Path.h>

using voro::pps::Connection;
using voro::pps::Message;

namespace {

strm_dict_t *dictionary(const char *name, const char *value)
{
    return strm_dict_set(strm_dict_new(), name, value);
}

} // namespace

Application::Application(const char *name)
    : m_connection(mmr_connect(nullptr)),
      m_context(mmr_context_create(m_connection, name, 0, 0700))
{
    if (!m_context) {
        qFatal("no context");
    }
}

Application::~Application()
{
    mmr_context_destroy(m_context);
    mmr_disconnect(m_connection);
}

int Application::attach(const QByteArray &url, const char *type) const
{
    return code(mmr_input_attach(m_context, url.constData(), type));
}

int Application::setContext(const char *name, const char *value) const
{
    return code(mmr_context_parameters(m_context, dictionary(name, value)));
}

int Application::setInput(const char *name, const char *value) const
{
    return code(mmr_input_parameters(m_context, dictionary(name, value)));
}

int Application::setOutput(int output, const char *name, const char *value) const
{
    return code(mmr_output_parameters(m_context, output, dictionary(name, value)));
}

std::unique_ptr<Connection> Application::watch(const std::string &object, unsigned mode) const
{
    char path[1024];
    mmr_context_path(m_context, path, sizeof path);
    auto connection = std::make_unique<Connection>();
    if (!connection->open(std::string(path) + '/' + object, mode)) {
        qFatal("cannot open %s", object.c_str());
    }
    return connection;
}

Message Application::content(const std::string &object) const
{
    std::string text;
    Message message;
    watch(object)->read(text, false);
    message.parse(text);
    return message;
}

QByteArray fileSink(const QByteArray &path)
{
    return "audioconvert ! audioresample ! audio/x-raw,format=F32LE,channels=1,rate=44100 ! filesink sync=false "
           "location="
           + path;
}

QList<float> samplesOf(const QByteArray &path)
{
    QFile file(QString::fromUtf8(path));
    if (!file.open(QFile::ReadOnly)) {
        qFatal("nothing was heard");
    }
    const QByteArray bytes = file.readAll();
    const auto *samples = reinterpret_cast<const float *>(bytes.constData());
    return {samples, samples + bytes.size() / static_cast<qsizetype>(sizeof(float))};
}

Message readMessage(Connection &object)
{
    std::string text;
    Message message;
    if (!object.read(text, true) || !message.parse(text)) {
        qFatal("the object cannot be read");
    }
    return message;
}

Message waitForEnd(Connection &state)
{
    Message message;
    do {
        message = readMessage(state);
    } while (!message.has("error"));
    return message;
}
