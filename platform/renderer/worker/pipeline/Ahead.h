#pragma once

#include <gst/gst.h>

namespace voro::renderer {

/** How much is decoded and handed to the sound server before it is heard. */
enum class Ahead {
    /** So little that a change is heard at once. */
    Little,
    /** So much that processes wake up rarely; after a change the sound has to be decoded again. */
    Much,
};

/** What is decoded, what the sound server holds, and how much of that it asks for at once. */
struct AheadAmounts {
    GstClockTime decoded;
    GstClockTime held;
    GstClockTime filled;
};

constexpr AheadAmounts amounts(Ahead ahead)
{
    return ahead == Ahead::Much
               // A filling is decoded in advance, and the next one waits: the threads need not wait for each other
               // within one.
               ? AheadAmounts{500 * GST_MSECOND, 2 * GST_SECOND, 500 * GST_MSECOND}
               // Enough to play without a gap, little enough to answer a change at once.
               : AheadAmounts{200 * GST_MSECOND, 200 * GST_MSECOND, 10 * GST_MSECOND};
}

} // namespace voro::renderer
