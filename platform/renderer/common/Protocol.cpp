#include "Protocol.h"

namespace voro::renderer {

namespace {

constexpr size_t MaximumCause = 1024;

} // namespace

std::string beginRequest(std::string_view command, int64_t id)
{
    std::string text;
    pps::appendText(text, "msg", command);
    pps::appendNumber(text, "id", id);
    return text;
}

std::string answer(std::string_view command, int64_t id, const Result &result)
{
    std::string text;
    pps::appendText(text, "res", command);
    pps::appendNumber(text, "id", id);
    pps::appendNumber(text, "err", static_cast<int64_t>(result.code));
    if (!result) {
        pps::appendText(text, "error", std::string_view(result.text).substr(0, MaximumCause));
    }
    return text;
}

ErrorCode codeOf(int64_t number)
{
    const bool isCode = number >= 0 && number <= static_cast<int64_t>(ErrorCode::CommandFailed);
    return isCode ? ErrorCode(number) : ErrorCode::Internal;
}

Result resultOf(const pps::Message &answer)
{
    const ErrorCode code = codeOf(answer.number("err", static_cast<int64_t>(ErrorCode::Internal)));
    return code == ErrorCode::None ? Result() : Result(code, answer.text("error"));
}

} // namespace voro::renderer
