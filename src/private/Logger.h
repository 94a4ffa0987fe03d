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

/** Whether debug lines are written; each source file has its own copy, which is set when the library is loaded. */
[[maybe_unused]] static const bool ENABLE_DEBUG = isDebugLogRequested();

/** Reduces the compiler's pretty-function text to class and method, as in "MediaPlayer::play". */
QString prettyFunction(const char *prettyFunctionText);

/** Logs that a function was entered and, at the end of its scope, left; knows the prefix of the function's lines. */
class FunctionTracer {
public:
    explicit FunctionTracer(QString name);
    ~FunctionTracer();
    Q_DISABLE_COPY_MOVE(FunctionTracer)

    /** What every line of the traced function begins with. */
    QByteArray prefix() const { return m_name.toLocal8Bit(); }

private:
    QString m_name;
    QElapsedTimer m_timer;
};

/**
 * A copy of a path or URL that may be logged; `size` is the length of the text with its end. Never null, empty when
 * there is no such copy.
 */
QSharedPointer<char> obfuscatePath(const char *path, int size);

/** A URL on its way into a line: its text, or the obfuscated text of a URL that names something on this device. */
class LoggedUrl {
public:
    /** What becomes of a URL without a scheme. */
    enum Relative { HideRelative, ShowRelative };

    explicit LoggedUrl(const QUrl &url, Relative relative = HideRelative) : m_url(url), m_relative(relative) {}
    friend QDebug operator<<(QDebug debug, const LoggedUrl &logged);

private:
    const QUrl &m_url;
    Relative m_relative;
};

/** The name of an enumerator, null for a number that has none. */
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
/** Streams that write one line each; nothing is formatted for a debug line that is not written. */
#define DEBUG_LINE                                                             \
    for (bool wanted = voro::multimedia::ENABLE_DEBUG; wanted; wanted = false) \
    LOG_LINE(qDebug())
#define WARNING_LINE LOG_LINE(qWarning())
#define CRITICAL_LINE LOG_LINE(qCritical())
