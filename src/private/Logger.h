#pragma once

#include <QtCore/QDebug>
#include <QtCore/QElapsedTimer>
#include <QtCore/QMetaEnum>
#include <QtCore/QSharedPointer>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include <cstdlib>
#include <cstring>

namespace voro::multimedia {

inline bool isDebugLogRequested()
{
    const char *value = std::getenv("VOROMULTIMEDIA_LOG_DEBUG");
    return value && std::strcmp(value, "1") == 0;
}

/** Whether debug lines are written. Each source file has its own copy, set when the library is loaded. */
[[maybe_unused]] static const bool ENABLE_DEBUG = isDebugLogRequested();

/** Reduces the compiler's pretty-function text to class and method, as in "MediaPlayer::play". */
QString prettyFunction(const char *prettyFunctionText);

/** Logs the entry of a function and, at the end of its scope, the exit; has the prefix of the function's lines. */
class FunctionTracer {
public:
    explicit FunctionTracer(QString name);
    ~FunctionTracer();
    Q_DISABLE_COPY_MOVE(FunctionTracer)

    /** The prefix of every line of the traced function. */
    QByteArray prefix() const { return m_name.toLocal8Bit(); }

private:
    QString m_name;
    QElapsedTimer m_timer;
};

/**
 * An obfuscated copy of a path or URL for the log; `size` includes the terminating zero. Never null; empty on
 * failure.
 */
QSharedPointer<char> obfuscatePath(const char *path, int size);

/** Streams a URL into a line. The URL of a local file or asset is obfuscated. */
class LoggedUrl {
public:
    /** Whether a URL without a scheme is obfuscated. */
    enum Relative { HideRelative, ShowRelative };

    explicit LoggedUrl(const QUrl &url, Relative relative = HideRelative) : m_url(url), m_relative(relative) {}
    friend QDebug operator<<(QDebug debug, const LoggedUrl &logged);

private:
    const QUrl &m_url;
    Relative m_relative;
};

/** The name of an enumerator; null for an unknown number. */
template<typename Enumeration>
const char *keyName(Enumeration value)
{
    return QMetaEnum::fromType<Enumeration>().valueToKey(value);
}

} // namespace voro::multimedia

/** The first statement of every function. A helper that takes the tracer of its caller logs in the caller's name. */
#define TRACE_FUNCTION() \
    const voro::multimedia::FunctionTracer tracer(voro::multimedia::prettyFunction(__PRETTY_FUNCTION__))

#define LOG_LINE(stream) stream.nospace() << tracer.prefix().constData() << ": "
/** Streams of one line each. A debug line that is not written is not formatted either. */
#define DEBUG_LINE                                                             \
    for (bool wanted = voro::multimedia::ENABLE_DEBUG; wanted; wanted = false) \
    LOG_LINE(qDebug())
#define WARNING_LINE LOG_LINE(qWarning())
#define CRITICAL_LINE LOG_LINE(qCritical())
