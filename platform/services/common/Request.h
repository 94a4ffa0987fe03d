#pragma once

#include <QtCore/QJsonObject>

#include <string>
#include <string_view>

namespace voro {

/** In front of each message that a client is to keep. */
inline constexpr char ControlLine[] = "@control\n";

/** What a client of a service asks for. */
struct Request {
    /** The command (`msg`). */
    std::string command;
    /** The command's map (`dat`); empty when it is missing or something else. */
    QJsonObject data;
};

/** Takes a message apart; empty when the text is bad. */
Request parseRequest(std::string_view text);

/** The answer to a command that failed. */
std::string makeFailure(std::string_view command, std::string_view problem);

} // namespace voro
