#pragma once

#include <voro/mmr.h>

#include <QtCore/QByteArray>
#include <QtCore/QList>

#include <pps/Connection.h>
#include <pps/Text.h>

#include <memory>
#include <string>
#include <vector>

/** A connection to the renderer with one context, as an application has it. */
class Application {
public:
    explicit Application(const char *name = "test");
    ~Application();
    Application(const Application &) = delete;
    Application &operator=(const Application &) = delete;

    mmr_context_t *context() const { return m_context; }
    /** The error code of a call's result. */
    int code(int result) const { return result < 0 ? static_cast<int>(mmr_error_info(m_context)->error_code) : 0; }
    int attach(const QByteArray &url, const char *type = "autolist") const;
    /** Sets one parameter of the context, of the input, or of the output. */
    int setContext(const char *name, const char *value) const;
    int setInput(const char *name, const char *value) const;
    int setOutput(int output, const char *name, const char *value) const;
    int attachAudio() const { return mmr_output_attach(m_context, "audio:default", "audio"); }

    /** An object of the context's folder, to be read if nothing else is said. */
    std::unique_ptr<voro::pps::Connection> watch(const std::string &object, unsigned mode = voro::pps::Subscribe) const;
    /** What an object of the folder holds now. */
    voro::pps::Message content(const std::string &object) const;

private:
    mmr_connection_t *m_connection;
    mmr_context_t *m_context;
};

/** A daemon's audio sink, as VORO_AUDIO_SINK: a file with 44100 samples a second, faster than time. */
QByteArray fileSink(const QByteArray &path);
/** The samples in that file. */
QList<float> samplesOf(const QByteArray &path);

/** Waits for the object's next content. */
voro::pps::Message readMessage(voro::pps::Connection &object);
/** Reads until the state names an error. */
voro::pps::Message waitForEnd(voro::pps::Connection &state);
