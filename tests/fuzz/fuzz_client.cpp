#include <pps/Connection.h>
#include <pps/Wire.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

using namespace voro::pps;

namespace {

constexpr const char *Paths[] = {"/pps/f/a", "/pps/f/.all", "/pps/f/b?delta,f=e", "/pps/f/control",
                                 "/pps/f/control?wait"};

std::string packet(const uint8_t *&at, const uint8_t *end)
{
    Reply header{};
    uint8_t fields[8] = {};
    const size_t taken = std::min<size_t>(sizeof fields, static_cast<size_t>(end - at));
    std::memcpy(fields, at, taken);
    at += taken;
    header.type = fields[0] % 10;
    header.more = fields[1] % 2;
    header.error = fields[1] > 250 ? fields[1] : 0;
    header.heldCount = fields[2] % 3;
    header.kept = fields[3] % 8;
    header.from = fields[4] % 4;
    header.to = {fields[4] / 4U, fields[4] / 4U};
    header.willSize = fields[5];
    header.returnSize = fields[6];
    header.shownBy = fields[6] % 3;
    const size_t size = std::min<size_t>(fields[7] * 2U, static_cast<size_t>(end - at));
    std::string whole(reinterpret_cast<const char *>(&header), sizeof header);
    whole.append(reinterpret_cast<const char *>(at), size);
    at += size;
    // Some are cut off.
    return fields[1] % 16 == 15 ? whole.substr(0, whole.size() / 2) : whole;
}

} // namespace

// A broker sends anything and then goes, with or without a word: reading ends, and so does every text.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0) {
        return 0;
    }
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) {
        std::abort();
    }
    Reply opened{};
    opened.type = Reply::Opened;
    opened.more = data[0] & 1;
    opened.from = 1;
    ::send(ends[1], &opened, sizeof opened, MSG_DONTWAIT);
    const uint8_t *at = data + 1;
    while (at < data + size) {
        const std::string whole = packet(at, data + size);
        ::send(ends[1], whole.data(), whole.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    }
    // It answers nothing, so whatever waits for an answer sees its end.
    shutdown(ends[1], SHUT_RDWR);
    Connection connection;
    if (connection.openOn(ends[0], Paths[data[0] / 2 % std::size(Paths)], PublishSubscribe - (data[0] / 2 % 5 == 1))) {
        std::string text;
        size_t reads = 0;
        while (connection.isReadable() && connection.read(text, false)) {
            if (text.size() > MaximumReply || ++reads > size + 8) {
                std::abort();
            }
        }
        connection.write("a::1");
        const FolderWill will = findWill("/pps/f", 1);
        for (std::string_view rest = will.text; !rest.empty();) {
            if (takeText(rest).empty()) {
                std::abort();
            }
        }
    }
    close(ends[1]);
    return 0;
}
