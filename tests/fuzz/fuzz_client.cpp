#include <fuzzer/FuzzedDataProvider.h>
#include <pps/Connection.h>
#include <pps/Wire.h>
#include <sys/socket.h>

#include <cstdlib>
#include <string>

using namespace voro::pps;

namespace {

constexpr const char *Paths[] = {"/pps/f/a", "/pps/f/.all", "/pps/f/b?delta,f=e", "/pps/f/control",
                                 "/pps/f/control?wait"};

std::string packet(FuzzedDataProvider &input)
{
    const auto byte = [&input] { return input.ConsumeIntegral<uint8_t>(); };
    Reply header{};
    header.type = byte() % 10;
    const uint8_t kind = byte();
    header.more = kind % 2;
    header.error = kind > 250 ? kind : 0;
    header.heldCount = byte() % 3;
    header.kept = byte() % 8;
    const uint8_t versions = byte();
    header.from = versions % 4;
    header.to = {versions / 4U, versions / 4U};
    header.willSize = byte();
    header.returnSize = byte();
    header.shownBy = header.returnSize % 3;
    const std::string whole =
        std::string(reinterpret_cast<const char *>(&header), sizeof header) + input.ConsumeBytesAsString(byte() * 2U);
    // Some are cut off.
    return kind % 16 == 15 ? whole.substr(0, whole.size() / 2) : whole;
}

} // namespace

// A broker sends anything and then goes, with or without a word: reading ends, and so does every text.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const auto first = input.ConsumeIntegral<uint8_t>();
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) {
        std::abort();
    }
    Reply opened{};
    opened.type = Reply::Opened;
    opened.more = first & 1;
    opened.from = 1;
    ::send(ends[1], &opened, sizeof opened, MSG_DONTWAIT);
    while (input.remaining_bytes() > 0) {
        const std::string whole = packet(input);
        ::send(ends[1], whole.data(), whole.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    }
    // It answers nothing, so whatever waits for an answer sees its end.
    shutdown(ends[1], SHUT_RDWR);
    Connection connection;
    if (connection.openOn(ends[0], Paths[first / 2 % std::size(Paths)], PublishSubscribe - (first / 2 % 5 == 1))) {
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
