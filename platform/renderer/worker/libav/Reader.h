#pragma once

#include "Container.h"
#include "Decoder.h"

#include <deque>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace voro::renderer {

/**
 * What the element that reads with libavformat does: it finds the streams, decodes each in the thread of its pad, and
 * whichever thread has no packet left reads on for all.
 */
class Reader {
public:
    explicit Reader(GstElement *element) : m_element(element) {}
    ~Reader() { stop(); }
    Reader(const Reader &) = delete;
    Reader &operator=(const Reader &) = delete;

    using OpenFile = LocalFile::Shared (*)(const std::string &path);
    /** Opens the file in a thread of its own, which adds the pads or posts an error. */
    void start(const std::string &path, OpenFile openFile);
    /** Ends what start() began; the pads are inactive by now. */
    void stop();

private:
    struct Stream {
        Reader *reader;
        const AVStream *stream;
        std::unique_ptr<Decoder> decoder;
        GstPad *pad = nullptr;
        std::deque<Packet> packets{};
        /** Events that precede the next buffer. */
        bool isSegmentDue = true;
        bool areTagsDue = true;
        /** Its pad is not linked. */
        bool isUnused = false;
    };

    void open(const std::string &path, const LocalFile::Shared &file);
    bool addStream(AVMediaType kind, const char *templateName, std::string &problem);
    static void onTurn(gpointer stream);
    void decodeNext(Stream &stream);
    /** Null at the end. */
    Packet nextOf(Stream &stream);
    GstFlowReturn push(Stream &stream, Owned<GstBuffer> buffer, Owned<GstCaps> caps);
    /** Pushes what is due before the next buffer or the end. */
    void announce(Stream &stream, const GstSegment &segment);
    GstSegment currentSegment();
    void fail(int code, const std::string &text);
    static gboolean onEvent(GstPad *pad, GstObject *element, GstEvent *event);
    static gboolean onQuery(GstPad *pad, GstObject *element, GstQuery *query);
    bool seek(GstEvent *event);

    GstElement *m_element;
    std::thread m_opener;
    std::unique_ptr<Container> m_container;
    std::list<Stream> m_streams;
    /** The first time of a file that does not begin at 0, in microseconds. */
    int64_t m_origin = 0;
    guint m_group = 0;
    std::mutex m_seeking;
    /** Guards what follows, the container and the packets. */
    std::mutex m_mutex;
    GstSegment m_segment{};
    Owned<GstTagList> m_tags;
    size_t m_waiting = 0;
};

} // namespace voro::renderer
