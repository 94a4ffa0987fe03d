#include <voro/slog2.h>

#include <QtCore/QThread>

#include <private/Logger.h>

#include <memory>
#include <utility>

namespace voro::multimedia {

namespace {

int currentThread()
{
    return static_cast<int>(reinterpret_cast<quintptr>(QThread::currentThreadId()));
}

/** The deleter of the shared empty text, which is static. */
void noDelete(char *) {}

bool namesFile(const QUrl &url)
{
    const QString scheme = url.scheme();
    return scheme.compare(QLatin1String("file"), Qt::CaseInsensitive) == 0
           || scheme.compare(QLatin1String("asset"), Qt::CaseInsensitive) == 0;
}

} // namespace

QString prettyFunction(const char *prettyFunctionText)
{
    const QString text = QString::fromLatin1(prettyFunctionText);
    qsizetype end = text.lastIndexOf(QLatin1Char('('));
    if (end < 0) {
        end = text.size() - 1;
    }
    qsizetype start = end;
    for (int colons = 0; start > 0; --start) {
        const QChar before = text.at(start - 1);
        if (before == QLatin1Char(' ') || (before == QLatin1Char(':') && ++colons == 3)) {
            break;
        }
    }
    return text.mid(start, end - start);
}

FunctionTracer::FunctionTracer(QString name) : m_name(std::move(name))
{
    m_timer.start();
    if (!ENABLE_DEBUG) {
        return;
    }
    qDebug().nospace() << prettyFunction(__PRETTY_FUNCTION__).toLocal8Bit().constData() << ": "
                       << "START" << currentThread() << m_name.toLatin1().constData();
}

FunctionTracer::~FunctionTracer()
{
    if (!ENABLE_DEBUG) {
        return;
    }
    qDebug().nospace() << prettyFunction(__PRETTY_FUNCTION__).toLocal8Bit().constData() << ": "
                       << "=> END" << currentThread() << "(" << m_timer.elapsed() << "ms):";
}

QSharedPointer<char> obfuscatePath(const char *path, int size)
{
    static char emptyText[] = "";
    static const QSharedPointer<char> empty(emptyText, noDelete);

    if (!path || size <= 0) {
        return empty;
    }
    std::unique_ptr<char, decltype(&std::free)> output(static_cast<char *>(std::malloc(size)), std::free);
    if (!output) {
        return empty;
    }
    if (slog2_obfuscate(0, 46, 0, path, size, output.get()) == 0) {
        return QSharedPointer<char>(output.release(), std::free);
    }
    qCritical().nospace() << prettyFunction(__PRETTY_FUNCTION__).toLocal8Bit().constData() << ": "
                          << "Path obfuscation failed at slog2 API";
    return empty;
}

QDebug operator<<(QDebug debug, const LoggedUrl &logged)
{
    const QString text = logged.m_url.toString();
    const bool isHidden =
        logged.m_url.scheme().isEmpty() ? logged.m_relative == LoggedUrl::HideRelative : namesFile(logged.m_url);
    if (!isHidden) {
        return debug << text;
    }
    const QByteArray local = text.toLocal8Bit();
    return debug << obfuscatePath(local.constData(), static_cast<int>(local.size()) + 1).data();
}

} // namespace voro::multimedia
