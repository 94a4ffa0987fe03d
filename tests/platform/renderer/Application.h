#pragma once

#include <voro/mmr.h>

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QList>

#include <pps/Connection.h>
#include <pps/Path.h>
#include <pps/Text.h>

#include <memory>
#include <string>
#include <vector>

/** Waits for the object's next content. */
inline voro::pps::Message readMessage(voro::pps::Connection &object)
{
    std::string text;
    voro::pps::Message message;
    if (!object.read(text, true) || !message.parse(text)) {
        qFatal("the object cannot be read");
    }
    return message;
}

/** Reads until the state names an error. */
inline voro::pps::Message waitForEnd(voro::pps::Connection &state)
{
    voro::pps::Message message;
    do {
        message = readMessage(state);
    } while (!message.has("error"));
    return message;
}

/** A connection to the renderer with one context, as an application has it. */
class Application {
public:
    explicit Application(const char *name = "test")
        : m_connection(mmr_connect(nullptr)),
          m_context(mmr_context_create(m_connection, name, 0, 0700))
    {
        if (!m_context) {
            qFatal("no context");
        }
    }
    ~Application()
    {
        mmr_context_destroy(m_context);
        mmr_disconnect(m_connection);
    }
    Application(const Application &) = delete;
    Application &operator=(const Application &) = delete;

    mmr_context_t *context() const { return m_context; }
    /** The error code of a call's result. */
    int code(int result) const { return result < 0 ? static_cast<int>(mmr_error_info(m_context)->error_code) : 0; }
    int attach(const QByteArray &url, const char *type = "autolist") const
    {
        return code(mmr_input_attach(m_context, url.constData(), type));
    }
    /** Sets one parameter of the context, of the input, or of the output. */
    int setContext(const char *name, const char *value) const
    {
        return code(mmr_context_parameters(m_context, dictionary(name, value)));
    }
    int setInput(const char *name, const char *value) const
    {
        return code(mmr_input_parameters(m_context, dictionary(name, value)));
    }
    int setOutput(int output, const char *name, const char *value) const
    {
        return code(mmr_output_parameters(m_context, output, dictionary(name, value)));
    }
    int attachAudio() const { return mmr_output_attach(m_context, "audio:default", "audio"); }
    /** Plays to the end; the error code of that, or of the command. */
    int playToEnd() const
    {
        const auto state = watch("state?wait");
        const int result = code(mmr_play(m_context));
        return result != 0 ? result : static_cast<int>(waitForEnd(*state).number("error", -1));
    }

    /** An object of the context's folder, to be read if nothing else is said. */
    std::unique_ptr<voro::pps::Connection> watch(const std::string &object, unsigned mode = voro::pps::Subscribe) const
    {
        char path[1024];
        mmr_context_path(m_context, path, sizeof path);
        auto connection = std::make_unique<voro::pps::Connection>();
        if (!connection->open(std::string(path) + '/' + object, mode)) {
            qFatal("cannot open %s", object.c_str());
        }
        return connection;
    }
    /** What an object of the folder holds now. */
    voro::pps::Message content(const std::string &object) const
    {
        std::string text;
        voro::pps::Message message;
        watch(object)->read(text, false);
        message.parse(text);
        return message;
    }

private:
    static strm_dict_t *dictionary(const char *name, const char *value)
    {
        return strm_dict_set(strm_dict_new(), name, value);
    }

    mmr_connection_t *m_connection;
    mmr_context_t *m_context;
};

/** A daemon's audio sink, as VORO_AUDIO_SINK: a file with 44100 samples a second, faster than time. */
inline QByteArray fileSink(const QByteArray &path)
{
    return "audioconvert ! audioresample ! audio/x-raw,format=F32LE,channels=1,rate=44100 ! filesink sync=false "
           "location="
           + path;
}

/** The samples in that file. */
inline QList<float> samplesOf(const QByteArray &path)
{
    QFile file(QString::fromUtf8(path));
    if (!file.open(QFile::ReadOnly)) {
        qFatal("nothing was heard");
    }
    const QByteArray bytes = file.readAll();
    const auto *samples = reinterpret_cast<const float *>(bytes.constData());
    return {samples, samples + bytes.size() / static_cast<qsizetype>(sizeof(float))};
}
