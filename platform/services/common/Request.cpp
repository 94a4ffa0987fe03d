#include "Request.h"

#include <QtCore/QJsonDocument>

#include <pps/Text.h>

namespace voro {

Request parseRequest(std::string_view text)
{
    pps::Message message;
    if (!message.parse(text)) {
        return {};
    }
    return {message.text("msg"), QJsonDocument::fromJson(QByteArray::fromStdString(message.text("dat"))).object()};
}

std::string makeFailure(std::string_view command, std::string_view problem)
{
    // What a client calls its command comes back to it, but not at any length.
    constexpr size_t MaximumCommandName = 255;
    std::string lines;
    pps::appendText(lines, "res", command.substr(0, MaximumCommandName));
    pps::appendText(lines, "err", problem);
    pps::appendText(lines, "error", problem);
    return lines;
}

} // namespace voro
