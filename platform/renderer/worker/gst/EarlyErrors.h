#pragma once

#include "Gst.h"

namespace voro::renderer {

/**
 * Keeps the errors that a decodebin drops: while it links an element it takes whatever the element complains of for a
 * reason to try another one, also what the element's own thread finds in the medium by then. Nothing would be heard
 * of such a medium any more.
 */
class EarlyErrors {
public:
    /** Has the errors in a bin's decodebins posted by the bin, before they are dropped or posted as ever. */
    static void keep(GstElement *bin);
    /** The error message in what keep() has posted, null for other messages. */
    static Owned<GstMessage> in(GstMessage *message);

private:
    static void onElementAdded(GstBin *top, GstBin *parent, GstElement *element, gpointer);
    static GstBusSyncReply onMessage(GstBus *bus, GstMessage *message, gpointer decodebin);
};

} // namespace voro::renderer
