#include "Failure.h"

namespace voro::renderer {

namespace {

ErrorCode codeOfResourceError(int code)
{
    switch (code) {
    case GST_RESOURCE_ERROR_NOT_FOUND:
    case GST_RESOURCE_ERROR_OPEN_READ:
    case GST_RESOURCE_ERROR_OPEN_READ_WRITE:
        return ErrorCode::SourceUnavailable;
    case GST_RESOURCE_ERROR_NOT_AUTHORIZED:
        return ErrorCode::Permission;
    case GST_RESOURCE_ERROR_NO_SPACE_LEFT:
    case GST_RESOURCE_ERROR_WRITE:
    case GST_RESOURCE_ERROR_OPEN_WRITE:
        return ErrorCode::Write;
    case GST_RESOURCE_ERROR_READ:
    case GST_RESOURCE_ERROR_SEEK:
        return ErrorCode::Read;
    case GST_RESOURCE_ERROR_BUSY:
        return ErrorCode::ResourceUnavailable;
    default:
        return ErrorCode::Internal;
    }
}

ErrorCode codeOfStreamError(int code)
{
    switch (code) {
    case GST_STREAM_ERROR_TYPE_NOT_FOUND:
    case GST_STREAM_ERROR_WRONG_TYPE:
    case GST_STREAM_ERROR_CODEC_NOT_FOUND:
    case GST_STREAM_ERROR_FORMAT:
        return ErrorCode::UnsupportedMediaType;
    case GST_STREAM_ERROR_DECRYPT:
    case GST_STREAM_ERROR_DECRYPT_NOKEY:
        return ErrorCode::Permission;
    default:
        return ErrorCode::ResourceCorrupted;
    }
}

ErrorCode codeOf(const GError &error)
{
    if (error.domain == GST_RESOURCE_ERROR) {
        return codeOfResourceError(error.code);
    }
    if (error.domain == GST_STREAM_ERROR) {
        return codeOfStreamError(error.code);
    }
    const bool isMissing = error.domain == GST_CORE_ERROR && error.code == GST_CORE_ERROR_MISSING_PLUGIN;
    return isMissing ? ErrorCode::UnsupportedMediaType : ErrorCode::Internal;
}

bool isStreamError(GstMessage *message, int code)
{
    GError *raw = nullptr;
    gst_message_parse_error(message, &raw, nullptr);
    const Owned<GError> error(raw);
    return g_error_matches(raw, GST_STREAM_ERROR, code);
}

} // namespace

bool isOfMedium(const Result &failure)
{
    return failure || failure.code == ErrorCode::UnsupportedMediaType || failure.code == ErrorCode::ResourceCorrupted
           || failure.code == ErrorCode::Internal;
}

Failure failureOf(GstMessage *error, bool isOutput)
{
    return {.result = toResult(error, isOutput),
            .isUnrecognized = isStreamError(error, GST_STREAM_ERROR_TYPE_NOT_FOUND),
            .namesCodec = isStreamError(error, GST_STREAM_ERROR_FORMAT)};
}

Result toResult(GstMessage *message, bool isOutput)
{
    GError *raw = nullptr;
    gst_message_parse_error(message, &raw, nullptr);
    const Owned<GError> error(raw);
    if (isOutput) {
        return {ErrorCode::OutputUnavailable, error->message};
    }
    // A source that does not get anything says no more than that the stream failed.
    const bool isSource = GST_IS_ELEMENT(GST_MESSAGE_SRC(message))
                          && GST_OBJECT_FLAG_IS_SET(GST_MESSAGE_SRC(message), GST_ELEMENT_FLAG_SOURCE);
    const bool isFailedSource = isSource && g_error_matches(raw, GST_STREAM_ERROR, GST_STREAM_ERROR_FAILED);
    return {isFailedSource ? ErrorCode::SourceUnavailable : codeOf(*error), error->message};
}

} // namespace voro::renderer
