#include "Medium.h"

#include "OpenLocal.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace voro::renderer {

namespace {

constexpr std::string_view FileScheme = "file://";
constexpr size_t HeadSize = 4096;

bool isSchemeCharacter(unsigned char c)
{
    return c < 128 && (isalnum(c) || c == '+' || c == '-' || c == '.');
}

/** "http://…", but neither a path with a colon nor one letter before it. */
bool hasScheme(std::string_view text)
{
    const size_t end = text.find("://");
    return end != std::string_view::npos && end > 1
           && std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), isSchemeCharacter);
}

std::string lowerCase(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](unsigned char c) { return std::tolower(c); });
    return result;
}

std::string percentEncode(std::string_view path)
{
    constexpr std::string_view Plain = "-_.~/!$&'()*+,;=:@";
    constexpr char Digits[] = "0123456789ABCDEF";
    std::string result;
    for (const unsigned char c : path) {
        if (c < 128 && (isalnum(c) || Plain.find(static_cast<char>(c)) != std::string_view::npos)) {
            result += static_cast<char>(c);
        } else {
            result += {'%', Digits[c >> 4], Digits[c & 15]};
        }
    }
    return result;
}

ErrorCode codeOf(int openingError)
{
    switch (openingError) {
    case EACCES:
    case EPERM:
        return ErrorCode::Permission;
    case EIO:
    case EMFILE:
    case ENFILE:
        return ErrorCode::Read;
    default:
        return ErrorCode::SourceUnavailable;
    }
}

} // namespace

Medium::Medium(std::string_view url)
    : m_url(url),
      m_start(url.starts_with(FileScheme) ? FileScheme.size() : 0),
      m_isLocal(m_start > 0 || !hasScheme(url))
{}

std::string Medium::uri() const
{
    return m_isLocal ? "file://" + percentEncode(path()) : m_url;
}

bool Medium::isNetworkScheme(std::string_view scheme)
{
    constexpr std::array Schemes{"http", "https", "rtsp", "rtsps", "mms", "mmsh", "ftp"};
    return std::find(Schemes.begin(), Schemes.end(), lowerCase(scheme)) != Schemes.end();
}

Result Medium::check() const
{
    if (!m_isLocal) {
        // Other schemes name what is the worker's own, its open files for example.
        const std::string scheme = lowerCase(m_url.substr(0, m_url.find(':')));
        return isNetworkScheme(scheme) ? Result()
                                       : Result(ErrorCode::UnsupportedMediaType, "unsupported URL scheme: " + scheme);
    }
    if (path().empty()) {
        return {ErrorCode::SourceUnavailable, "no source"};
    }
    const LocalFile::Shared file = openLocal(path(), Freshness::Now);
    if (file->error() == EMEDIUMTYPE) {
        return {ErrorCode::UnsupportedMediaType, path() + " is not a regular file"};
    }
    if (!file->isOpen()) {
        const char *problem = file->error() == ETIMEDOUT ? "the disk does not answer" : std::strerror(file->error());
        return {codeOf(file->error()), path() + ": " + problem};
    }
    if (file->size() == 0) {
        return {ErrorCode::ResourceCorrupted, path() + " is empty"};
    }
    return {};
}

std::string_view Medium::withoutByteOrderMark(std::string_view text)
{
    constexpr std::string_view Mark = "\xef\xbb\xbf";
    return text.starts_with(Mark) ? text.substr(Mark.size()) : text;
}

bool Medium::isPlaylistText(std::string_view head)
{
    const std::string text = lowerCase(withoutByteOrderMark(head));
    if (text.starts_with("#extm3u")) {
        return text.find("#ext-x-") == std::string::npos;
    }
    const size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos) {
        return false;
    }
    const std::string_view content = std::string_view(text).substr(first);
    return content.starts_with("[playlist]") || content.starts_with("<asx")
           || (content.starts_with("<?xml") && content.find("<playlist") != std::string_view::npos);
}

bool Medium::isStreamIndex(std::string_view head)
{
    const std::string text = lowerCase(withoutByteOrderMark(head));
    const bool isXml = text.find_first_not_of(" \t\r\n") == text.find('<');
    return text.starts_with("#extm3u")
           || (isXml && (text.find("<mpd") != text.npos || text.find("<smoothstreamingmedia") != text.npos));
}

bool Medium::isNamedLikePlaylist() const
{
    constexpr std::array Extensions{".m3u", ".pls", ".xspf", ".asx", ".m3u8"};
    const std::string name = lowerCase(m_isLocal ? m_url : m_url.substr(0, m_url.find_first_of("?#")));
    // An m3u8 on the net is nearly always a stream's own index.
    const auto end = Extensions.end() - (m_isLocal ? 0 : 1);
    return std::any_of(Extensions.begin(), end, [&](std::string_view extension) { return name.ends_with(extension); });
}

bool Medium::isPlaylist() const
{
    if (!m_isLocal) {
        return isNamedLikePlaylist();
    }
    const std::string head = openLocal(path())->at(0, HeadSize);
    if (isPlaylistText(head)) {
        return true;
    }
    // A list without a head line is plain text: no medium is.
    return isNamedLikePlaylist() && head.find('\0') == std::string::npos
           && lowerCase(head).find("#ext-x-") == std::string::npos;
}

bool Medium::beginsLikeMedium() const
{
    constexpr std::array<std::string_view, 6> Beginnings{"OggS", "RIFF", "fLaC", "ID3", "\x1a\x45\xdf\xa3", "FORM"};
    if (!m_isLocal) {
        return false;
    }
    const std::string head = openLocal(path())->at(0, HeadSize);
    return head.find("ftyp") == 4 || std::any_of(Beginnings.begin(), Beginnings.end(), [&](std::string_view beginning) {
               return head.starts_with(beginning);
           });
}

} // namespace voro::renderer
