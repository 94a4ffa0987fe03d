#include "Problem.h"

#include "Arguments.h"

#include <voro/mmr.h>
#include <voro/PpsObject.h>

#include <QtCore/QCoreApplication>

#include <words/ErrorWords.h>

#include <memory>

namespace voro {

using multimedia::MediaError;

namespace {

/** What the renderer says of a medium when it is asked once more; empty for one that it opens. */
QString rendererWords(const QUrl &medium)
{
    const std::unique_ptr<mmr_connection_t, decltype(&mmr_disconnect)> connection(mmr_connect(nullptr),
                                                                                  &mmr_disconnect);
    const QByteArray name = "voro.problem." + QByteArray::number(QCoreApplication::applicationPid());
    const std::unique_ptr<mmr_context_t, decltype(&mmr_context_destroy)> context(
        connection ? mmr_context_create(connection.get(), name.constData(), 0, 0600) : nullptr, &mmr_context_destroy);
    const bool hasOutput = context && mmr_output_attach(context.get(), "audio:default", "audio") >= 0;
    // The renderer takes the path of a file as it stands.
    const QByteArray url = medium.isLocalFile() ? medium.toLocalFile().toUtf8() : medium.toEncoded();
    if (!hasOutput || mmr_input_attach(context.get(), url.constData(), "autolist") == 0) {
        return {};
    }
    const mmr_error_info_t *info = mmr_error_info(context.get());
    // A decoder is told of as "missing: DTS decoder".
    return info
               ? fragment(QString::fromUtf8(info->extra_text).replace(QLatin1String("missing: "), QLatin1String("no ")))
               : QString();
}

QString codeOf(MediaError::Type error)
{
    return QStringLiteral(" (%1)").arg(enumeratorName(error));
}

} // namespace

QString fragment(QString sentence)
{
    if (sentence.endsWith(QLatin1Char('.'))) {
        sentence.chop(1);
    }
    if (!sentence.isEmpty()) {
        sentence[0] = sentence[0].toLower();
    }
    return sentence;
}

QString daemonProblem()
{
    PpsObject root(QStringLiteral("/pps/.list"));
    if (root.open(PpsOpenMode::Subscribe)) {
        return {};
    }
    return QStringLiteral("the daemon cannot be reached: ") + root.errorString();
}

QString problemOf(MediaError::Type error, const QUrl &medium)
{
    if (const QString reason = daemonProblem(); !reason.isEmpty()) {
        return reason + codeOf(error);
    }
    const QString words = fragment(errorSentence(error, medium));
    const bool isUnclear = error == MediaError::UnsupportedMediaType && words == fragment(errorSentence(error));
    const QString more = isUnclear && !medium.isEmpty() ? rendererWords(medium) : QString();
    return words + (more.isEmpty() ? more : QLatin1String(": ") + more) + codeOf(error);
}

QString recordingProblem(MediaError::Type error, const QUrl &file)
{
    const QString reason = daemonProblem();
    return (reason.isEmpty() ? fragment(recordingSentence(error, file)) : reason) + codeOf(error);
}

} // namespace voro
