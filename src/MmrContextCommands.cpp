// Renderer commands that depend on the monitor's caches, and the cached parameters.

#include <private/Dictionary.h>
#include <private/Failures.h>
#include <private/MmrContextNotifier.h>

namespace voro::multimedia {

MediaError::Type MmrContextNotifier::attachInput(const QString &url, const QString &type)
{
    TRACE_FUNCTION();
    if (type == QLatin1String("autolist") && m_trackParameters.contains(1)) {
        updateInputParameters(m_trackParameters[1]);
    } else if (type == QLatin1String("playlist")) {
        updateTrackParameters(0, m_trackParameters[1]);
    }

    MediaError::Type result = MediaError::None;
    if (mmr_input_attach(m_context, url.toUtf8().constData(), type.toUtf8().constData()) != 0) {
        result = lastError();
    }
    updateTrackParameters(0, {});
    return result;
}

MediaError::Type MmrContextNotifier::attachOutput(const QString &url, const QString &type, int *outputId)
{
    TRACE_FUNCTION();
    const int id = mmr_output_attach(m_context, url.toUtf8().constData(), type.toUtf8().constData());
    if (id == -1) {
        return fail(tracer, lastError(), "Unable to attach output. url=", url, ", type=", type);
    }
    if (outputId) {
        *outputId = id;
    }
    m_subpictureOutputAttached = type == QLatin1String("subpicture");
    return MediaError::None;
}

MediaError::Type MmrContextNotifier::seek(unsigned int track, unsigned int position)
{
    TRACE_FUNCTION();
    const QString target = QStringLiteral("%1:%2").arg(track).arg(position);
    const QVariantMap parameters = trackParameters(track);
    if (!parameters.isEmpty()) {
        MediaError::Type result = updateTrackParameters(track, parameters);
        if (result == MediaError::InvalidParameter) {
            result = updateTrackParameters(0, parameters);
        }
        if (result != MediaError::None) {
            return result;
        }
    }
    if (mmr_seek(m_context, target.toUtf8().constData()) == -1) {
        return fail(tracer, lastError(), "Error seeking. track=", track, ", position=", position, ", error=");
    }
    return MediaError::None;
}

MediaError::Type MmrContextNotifier::updateInputParameter(const QString &name, const QString &value)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "  " << name << "=" << value;
    m_inputParameters[name] = value;
    return sendInputParameters(tracer, m_inputParameters);
}

MediaError::Type MmrContextNotifier::updateInputParameters(const QVariantMap &parameters)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "   " << parameters;
    return sendInputParameters(tracer, parameters);
}

MediaError::Type MmrContextNotifier::sendInputParameters(const FunctionTracer &tracer, const QVariantMap &parameters)
{
    strm_dict_t *dictionary = nullptr;
    if (const auto error = createDictionaryFromMap(parameters, &dictionary)) {
        return error;
    }
    if (mmr_input_parameters(m_context, dictionary) != 0) {
        return fail(tracer, lastError(), "Unable to set input parameters.");
    }
    return MediaError::None;
}

MediaError::Type MmrContextNotifier::updateTrackParameter(unsigned int track, const QString &name, const QString &value)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "  track=" << track;
    DEBUG_LINE << "  " << name << "=" << value;
    const QString prevValue = trackParameters(track).value(name).toString();
    DEBUG_LINE << "  prevValue= " << prevValue;

    if (!m_trackParameters.contains(track)) {
        const auto reported =
            toParameterMap(QStringLiteral("p%1").arg(track), nullptr).value(QStringLiteral("@p%1").arg(track)).toMap();
        for (auto attribute = reported.begin(); attribute != reported.end(); ++attribute) {
            const QString text = attribute->toString();
            m_trackParameters[track][attribute.key()] = text;
            DEBUG_LINE << "track " << track << ": " << attribute.key() << "=" << text;
        }
    }
    m_trackParameters[track][name] = value;
    if (m_isIdle) {
        return MediaError::None;
    }

    const MediaError::Type result = updateTrackParameters(track, m_trackParameters[track]);
    if (result != MediaError::None) {
        if (prevValue.isEmpty()) {
            m_trackParameters[track].remove(name);
        } else {
            m_trackParameters[track][name] = prevValue;
        }
    }
    return result;
}

MediaError::Type MmrContextNotifier::updateTrackParameters(unsigned int track, const QVariantMap &parameters)
{
    TRACE_FUNCTION();
    DEBUG_LINE << parameters;
    QVariantMap sent = parameters;
    if (track != 0 && !m_subpictureOutputAttached) {
        sent.remove(QStringLiteral("subpicture_index"));
        sent.remove(QStringLiteral("subpicture_url"));
    }
    strm_dict_t *dictionary = nullptr;
    if (const auto error = createDictionaryFromMap(sent, &dictionary)) {
        return error;
    }
    if (mmr_track_parameters(m_context, track, dictionary) != 0) {
        return fail(tracer, lastError(), "Unable to set track parameters. track=", track);
    }
    return MediaError::None;
}

QVariantMap MmrContextNotifier::trackParameters(unsigned int track) const
{
    TRACE_FUNCTION();
    return m_trackParameters.value(track);
}

MediaError::Type MmrContextNotifier::createDictionaryFromMap(const QVariantMap &map, strm_dict_t **dictionary)
{
    TRACE_FUNCTION();
    Dictionary built;
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        const QString text = entry->toString();
        if (text.isEmpty() || built.set(entry.key(), text)) {
            continue;
        }
        *dictionary = nullptr;
        return refuse(tracer, MediaError::InvalidParameter, "Unable to create parameter. ", entry.key(), "=", text);
    }
    *dictionary = built.release();
    return MediaError::None;
}

} // namespace voro::multimedia
