#pragma once

/*
 * The part of the worker that knows the formats of playlists. It brings large libraries along and is loaded only when
 * a playlist comes.
 */

namespace voro::renderer {

/** A reader's listener, called from the main loop. */
struct PlaylistListener {
    /** A place in the list: a URI or a path, and a title or null. */
    void (*entry)(const char *uri, const char *title, void *data);
    /** Nothing comes after this. `isList` is false for what is no playlist. */
    void (*end)(bool isList, void *data);
    void *data;
};

/** Reads the playlist at a URI without following the playlists in it; relative places start from `base`. */
using ReadPlaylist = void (*)(const char *uri, const char *base, const PlaylistListener &listener);

inline constexpr char ReadPlaylistName[] = "voroReadPlaylist";

} // namespace voro::renderer
