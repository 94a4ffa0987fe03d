#pragma once

#include <pps/Fd.h>
#include <renderer/common/Error.h>
#include <renderer/worker/gst/Gst.h>
#include <renderer/worker/lookup/Fetch.h>
#include <renderer/worker/media/Queue.h>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace voro::renderer {

/** Reads playlists of every format, the ones in them included, into one list. */
class Playlist {
public:
    using ListRead = std::function<void(const Result &, std::vector<QueueEntry>)>;

    Playlist() = default;
    ~Playlist() { cancel(); }
    Playlist(const Playlist &) = delete;
    Playlist &operator=(const Playlist &) = delete;

    /** Reads one and calls `done` with what is in it, from the main loop. */
    void read(const Medium &list, ListRead done);
    void cancel();

private:
    /** The playlists that led to a place, to notice when one leads to itself. */
    struct Trail {
        Medium list;
        /** The same for every name that the playlist has. */
        std::string identity;
        std::shared_ptr<const Trail> parent;
        int depth;
    };
    struct Place {
        QueueEntry entry;
        std::shared_ptr<const Trail> trail;
    };
    /** One reading under way; it outlives a cancellation. */
    struct Reading {
        /** An entry as it is listed. */
        struct Line {
            std::string uri;
            std::string title;
        };
        Playlist *owner;
        std::shared_ptr<const Trail> trail;
        std::vector<Line> lines;
        /** A repaired copy of the file, which is read instead. */
        pps::Fd copy;
        ~Reading();
    };

    void proceed();
    void parse(std::shared_ptr<const Trail> trail);
    void parseText(std::shared_ptr<const Trail> trail, std::string text);
    void start(std::unique_ptr<Reading> reading, const std::string &uri);
    void take(const Reading &reading, bool isList);
    void finish(const Result &result);
    static bool leadsToItself(const Trail *trail, const std::string &identity);
    static gboolean onTimeout(gpointer self);

    ListRead m_done;
    std::deque<Place> m_places;
    std::vector<QueueEntry> m_entries;
    Result m_problem;
    int m_read = 0;
    Reading *m_reading = nullptr;
    Fetch m_fetch;
    MainLoopSource m_timer;
};

} // namespace voro::renderer
