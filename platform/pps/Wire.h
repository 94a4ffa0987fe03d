#pragma once

#include "Text.h"

#include <cstddef>
#include <cstdint>

/*
 * The packets between a client and the broker: a header in the machine's own byte order and a body, one packet of a
 * SOCK_SEQPACKET socket each. docs/pps-wire.md shows whole conversations.
 */

namespace voro::pps {

inline constexpr uint16_t WireVersion = 2;

/**
 * How much of what it subscribed to a reader has seen. The broker keeps no copy for a reader; it works out what is
 * pending from this.
 */
struct Position {
    /** Everything up to this version has been seen. 0: nothing was read yet. */
    uint64_t base = 0;
    /**
     * Above `base` while a long read goes on in several packets: objects last written up to this version were given
     * out.
     */
    uint64_t reached = 0;
};

/** One object of which a reader has seen less than its position says: a fence held it back. */
struct Held {
    uint64_t object;
    uint64_t version;
};

/** A client's packet. */
struct Request {
    enum Type : uint8_t {
        /** Body: the path with its options. Answered by Opened. */
        Open = 1,
        /** Body: PPS text. */
        Write,
        /** Body: Held entries. Answered by Answer, which holds everything since the position. */
        Pull,
        Close,
    };
    uint8_t type;
    /** Open: the open mode. */
    uint8_t mode;
    /** Open: WireVersion. */
    uint16_t version;
    /** Open: 1 when the reader knows the folder's will, so that what comes back just as it says is no news. */
    uint32_t knowsWill;
    /**
     * A random number of the sending process, and the packet's number in this process: 1, 2, 3 over all its sockets.
     */
    uint64_t process;
    uint64_t number;
    /** Pull: what the reader has seen. */
    Position seen;
};

/** A packet of the broker. */
struct Reply {
    enum Type : uint8_t {
        /** `error` is 0 or an errno number; `to` and `more` as in Answer, and `from` is the broker's own number. */
        Opened = 1,
        /** A change pushed to a reader whose socket was empty: Held entries and PPS text. */
        Change,
        /** There is more than the reader's socket holds; nothing follows until it pulls. */
        Mark,
        /** Held entries and PPS text: everything since the position of the Pull. */
        Answer,
        /** One message of a service object. */
        Message,
        /** Nothing but what the client is to keep. */
        Keep,
        /** The broker is about to close the socket. A socket that ends without it lost its daemon. */
        Closed,
    };
    /** The texts behind the body that the client keeps in place of its former ones. */
    enum Kept : uint8_t {
        /** The will of the folder, which every connection of the process to the folder shares. */
        FolderWill = 1,
        /** The will of the client of a service object. */
        ClientWill = 2,
        /** The client's first messages when it is back. */
        Return = 4,
    };
    uint8_t type;
    /** Whether a Pull would bring something after this packet. */
    uint8_t more;
    uint16_t error;
    uint16_t heldCount;
    /** Bits of Kept. */
    uint16_t kept;
    /** Change: the version that the reader must have seen for the packet to be all that it lacks. */
    uint64_t from;
    /** The reader's position after this packet. */
    Position to;
    uint32_t willSize;
    uint32_t returnSize;
    /** FolderWill: who has seen this version does not need to read the will, because it was published; 0: everybody. */
    uint64_t shownBy;
};

/**
 * In every version of the protocol the first packet of either side begins with these bytes, which show its version.
 */
inline constexpr size_t CommonHeader = 4;
static_assert(offsetof(Request, version) == 2 && offsetof(Reply, error) == 2);
static_assert(sizeof(Request) == 40 && sizeof(Reply) == 48);

/** At most so many Held entries travel with a position. */
inline constexpr size_t MaximumHeld = 64;

/** The longest will and the longest return. */
inline constexpr size_t MaximumKept = 32 * 1024;

/** The longest packet of a client. */
inline constexpr size_t MaximumRequest = sizeof(Request) + MaximumHeld * sizeof(Held) + MaximumMessage;

/** The longest packet of the broker. A service's message gets an object line in front. */
inline constexpr size_t MaximumReply =
    sizeof(Reply) + MaximumHeld * sizeof(Held) + MaximumMessage + 64 + 2 * MaximumKept;

} // namespace voro::pps
