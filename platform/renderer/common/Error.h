#pragma once

#include <string>
#include <utility>

namespace voro::renderer {

/** The renderer's error codes, as applications know them. */
enum class ErrorCode : int {
    None = 0,
    Internal = 1,
    InvalidParameter = 2,
    InvalidState = 3,
    UnsupportedValue = 4,
    UnsupportedMediaType = 5,
    UnsupportedOperation = 7,
    Read = 8,
    Write = 9,
    SourceUnavailable = 10,
    ResourceCorrupted = 11,
    OutputUnavailable = 12,
    OutOfMemory = 13,
    ResourceUnavailable = 14,
    Permission = 32,
    CommandFailed = 33,
};

/** The result of a command: a code, and for a failure the cause in words. */
struct Result {
    ErrorCode code = ErrorCode::None;
    std::string text;

    Result() = default;
    Result(ErrorCode errorCode, std::string cause) : code(errorCode), text(std::move(cause)) {}
    /** Whether the command succeeded. */
    explicit operator bool() const { return code == ErrorCode::None; }
};

} // namespace voro::renderer
