#include "ScriptedRenderer.h"

#include <voro/mmr.h>

#include <new>
#include <utility>
#include <vector>

using voro::test::ScriptedRenderer;

struct mmr_connection {};

struct mmr_context {
    QString name;
    mmr_error_info_t error = {};
    bool hasError = false;
    int nextOutput = 0;
};

struct strm_dict {
    std::vector<std::pair<QByteArray, QByteArray>> entries;
};

namespace voro::test {

ScriptedRenderer *ScriptedRenderer::s_current = nullptr;

ScriptedRenderer::ScriptedRenderer(QStringList &trace, const std::function<void(ScriptedRenderer &)> &script)
    : m_trace(trace)
{
    s_current = this;
    if (script) {
        script(*this);
    }
}

ScriptedRenderer::~ScriptedRenderer()
{
    if (m_dictionaries != 0) {
        qFatal("%d dictionaries were neither consumed nor destroyed", m_dictionaries);
    }
    s_current = nullptr;
}

ScriptedRenderer *ScriptedRenderer::current()
{
    return s_current;
}

void ScriptedRenderer::fail(const QString &function, multimedia::MediaError::Type code, int64_t extraValue)
{
    m_failures[function] = {true, code, extraValue};
}

void ScriptedRenderer::failWithoutRecord(const QString &function)
{
    m_failures[function] = {false, multimedia::MediaError::None, 0};
}

void ScriptedRenderer::succeed(const QString &function)
{
    m_failures.remove(function);
}

const ScriptedRenderer::Failure *ScriptedRenderer::call(const QString &function, const QStringList &arguments)
{
    m_trace += (QStringList(function) + arguments).join(QLatin1Char(' '));
    const auto failure = m_failures.constFind(function);
    return failure == m_failures.constEnd() ? nullptr : &*failure;
}

QString contextFolder(const QString &name)
{
    // No name within a path may hold a colon.
    return QStringLiteral("/pps/services/multimedia/renderer/context/")
           + QString(name).replace(QLatin1Char(':'), QLatin1Char('_'));
}

namespace {

/** Answers one call on a context: 0, or -1 with the context's error record set. */
int answer(const char *function, mmr_context_t *context, const QStringList &arguments)
{
    const auto *failure = ScriptedRenderer::current()->call(QString::fromLatin1(function), arguments);
    if (!context) {
        return -1;
    }
    if (!failure) {
        return 0;
    }
    context->hasError = failure->recorded;
    context->error.error_code = static_cast<uint32_t>(failure->code);
    context->error.extra_value = failure->extraValue;
    return -1;
}

/** Consumes a dictionary and shows what it held. */
QStringList consume(strm_dict_t *dictionary)
{
    QStringList shown;
    for (const auto &[key, value] : dictionary->entries) {
        shown += QString::fromUtf8(key) + QLatin1Char('=') + QString::fromUtf8(value);
    }
    strm_dict_destroy(dictionary);
    return shown;
}

QString text(const char *value)
{
    return QString::fromUtf8(value);
}

} // namespace

} // namespace voro::test

using voro::test::answer;
using voro::test::consume;
using voro::test::text;

extern "C" {

mmr_connection_t *mmr_connect(const char *)
{
    return ScriptedRenderer::current()->call(text("mmr_connect"), {}) ? nullptr : new mmr_connection;
}

void mmr_disconnect(mmr_connection_t *connection)
{
    ScriptedRenderer::current()->call(text("mmr_disconnect"), {});
    delete connection;
}

mmr_context_t *mmr_context_create(mmr_connection_t *, const char *name, unsigned flags, mode_t mode)
{
    if (ScriptedRenderer::current()->call(text("mmr_context_create"),
                                          {text(name), QString::number(flags), QString::number(mode, 8)})) {
        return nullptr;
    }
    auto *context = new mmr_context;
    context->name = text(name);
    return context;
}

int mmr_context_destroy(mmr_context_t *context)
{
    ScriptedRenderer::current()->call(text("mmr_context_destroy"), {});
    delete context;
    return 0;
}

ssize_t mmr_context_path(mmr_context_t *context, char *buffer, size_t length)
{
    const QByteArray path = voro::test::contextFolder(context->name).toUtf8();
    if (answer("mmr_context_path", context, {QString::number(length)}) == -1
        || static_cast<size_t>(path.size()) >= length) {
        return -1;
    }
    qstrncpy(buffer, path.constData(), length);
    return path.size();
}

int mmr_context_parameters(mmr_context_t *context, strm_dict_t *parameters)
{
    return answer("mmr_context_parameters", context, consume(parameters));
}

int mmr_input_attach(mmr_context_t *context, const char *url, const char *type)
{
    return answer("mmr_input_attach", context, {text(url), text(type)});
}

int mmr_input_detach(mmr_context_t *context)
{
    return answer("mmr_input_detach", context, {});
}

int mmr_input_parameters(mmr_context_t *context, strm_dict_t *parameters)
{
    return answer("mmr_input_parameters", context, consume(parameters));
}

int mmr_output_attach(mmr_context_t *context, const char *url, const char *type)
{
    return answer("mmr_output_attach", context, {text(url), text(type)}) == -1 ? -1 : context->nextOutput++;
}

int mmr_output_detach(mmr_context_t *context, int output)
{
    return answer("mmr_output_detach", context, {QString::number(output)});
}

int mmr_output_parameters(mmr_context_t *context, int output, strm_dict_t *parameters)
{
    return answer("mmr_output_parameters", context, QStringList(QString::number(output)) + consume(parameters));
}

int mmr_play(mmr_context_t *context)
{
    return answer("mmr_play", context, {});
}

int mmr_stop(mmr_context_t *context)
{
    return answer("mmr_stop", context, {});
}

int mmr_seek(mmr_context_t *context, const char *position)
{
    return answer("mmr_seek", context, {text(position)});
}

int mmr_speed_set(mmr_context_t *context, int speed)
{
    return answer("mmr_speed_set", context, {QString::number(speed)});
}

int mmr_track_parameters(mmr_context_t *context, unsigned track, strm_dict_t *parameters)
{
    return answer("mmr_track_parameters", context, QStringList(QString::number(track)) + consume(parameters));
}

const mmr_error_info_t *mmr_error_info(mmr_context_t *context)
{
    return context->hasError ? &context->error : nullptr;
}

strm_dict_t *strm_dict_new(void)
{
    ScriptedRenderer::current()->countDictionary(1);
    return new strm_dict;
}

strm_dict_t *strm_dict_set(strm_dict_t *dictionary, const char *key, const char *value)
{
    if (ScriptedRenderer::current()->isKeyFailing(text(key))) {
        return nullptr;
    }
    // The old handle must not be used again: give another one, so that a sanitizer sees it.
    auto *changed = new strm_dict(*dictionary);
    delete dictionary;
    changed->entries.emplace_back(key, value);
    return changed;
}

void strm_dict_destroy(strm_dict_t *dictionary)
{
    if (!dictionary) {
        return;
    }
    ScriptedRenderer::current()->countDictionary(-1);
    delete dictionary;
}

} // extern "C"
