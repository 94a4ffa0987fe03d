#include <voro/slog2.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view Separators = "/:?#&=";

char lengthClass(size_t length)
{
    if (length <= 8) {
        return 's';
    }
    return length <= 16 ? 'm' : 'l';
}

/** The mark of one name, never longer than the name; the extension of a last name stays readable. */
std::string mark(std::string_view name, char separator, bool isLast)
{
    if (name.empty()) {
        return {};
    }
    const size_t dot = isLast ? name.rfind(separator) : std::string_view::npos;
    const bool hasExtension = dot != std::string_view::npos && dot > 0;
    std::string result(1, lengthClass(hasExtension ? dot : name.size()));
    if (hasExtension) {
        result.append(name.substr(dot));
    }
    return result;
}

/** The length of the URL scheme at the beginning, which reveals nothing about the user and stays as it is. */
size_t schemeLength(std::string_view text)
{
    const size_t colon = text.find(':');
    if (colon == std::string_view::npos || colon == 0) {
        return 0;
    }
    const auto isSchemeCharacter = [](unsigned char c) {
        return c < 128 && (isalnum(c) || c == '+' || c == '-' || c == '.');
    };
    return std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(colon), isSchemeCharacter) ? colon + 1
                                                                                                           : 0;
}

} // namespace

int slog2_obfuscate(int flags, int separator, int reserved, const char *text, size_t size, char *output)
{
    if (flags != 0 || reserved != 0 || separator <= 0 || separator > 127 || !text || !output || size == 0) {
        return EINVAL;
    }

    std::string_view rest(text);
    const size_t scheme = schemeLength(rest);
    std::string result(rest.substr(0, scheme));
    rest.remove_prefix(scheme);

    // The path ends where a query or fragment begins: the extension is that of the path's last name.
    const size_t pathEnd = std::min(rest.find_first_of("?#"), rest.size());
    for (size_t at = 0; at <= rest.size();) {
        const size_t end = std::min(rest.find_first_of(Separators, at), rest.size());
        result += mark(rest.substr(at, end - at), static_cast<char>(separator), end == pathEnd);
        if (end < rest.size()) {
            result += rest[end];
        }
        at = end + 1;
    }

    const size_t length = std::min(result.size(), size - 1);
    std::copy_n(result.begin(), length, output);
    output[length] = '\0';
    return 0;
}
