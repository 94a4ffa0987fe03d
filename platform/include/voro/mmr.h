#pragma once

/*
 * Client functions of the renderer service.
 *
 * A connection makes contexts; a context plays one queue or records one file. Every call waits for its answer. A call
 * that fails fills the context's error record, which mmr_error_info() shows. The service publishes a context's state
 * as PPS objects in the folder that mmr_context_path() names.
 */

#include <voro/strm_dict.h>

#include <stddef.h>
#include <stdint.h>
#include <sys/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A connection to the renderer service. */
typedef struct mmr_connection mmr_connection_t;
/** What plays one queue or records one file. */
typedef struct mmr_context mmr_context_t;

/** Why the last call on a context failed. */
typedef struct {
    /** The renderer's error code; the numbers are those of voro::multimedia::MediaError. 0 when nothing failed. */
    uint32_t error_code;
    /** For a code of 33 (a failed command) the command's own error code, else 0. */
    int64_t extra_value;
    /** The cause in words, for people. */
    char extra_text[256];
} mmr_error_info_t;

/** Connects to the renderer service; `name` is ignored and may be null. Null when there is no service. */
mmr_connection_t *mmr_connect(const char *name);
/** Closes a connection; null is allowed. Its contexts must have been destroyed. */
void mmr_disconnect(mmr_connection_t *connection);

/**
 * Makes a context with a name that nobody else uses; `flags` is 0 and `mode` the permission bits of its folder. Null
 * on failure.
 */
mmr_context_t *mmr_context_create(mmr_connection_t *connection, const char *name, unsigned flags, mode_t mode);
/** Ends playback or recording and removes the context; null is allowed. */
int mmr_context_destroy(mmr_context_t *context);
/** Writes the context's PPS folder, terminated, into `buffer`. Returns the path's length, -1 when it does not fit. */
ssize_t mmr_context_path(mmr_context_t *context, char *buffer, size_t length);
/** Sets context parameters (`updateinterval`, ms); merged into what was set. Consumes the dictionary. */
int mmr_context_parameters(mmr_context_t *context, strm_dict_t *parameters);

/** Attaches an input of type "autolist", "playlist" or "track". Returns when the medium is known to play. */
int mmr_input_attach(mmr_context_t *context, const char *url, const char *type);
/** Detaches the input; succeeds when there is none. */
int mmr_input_detach(mmr_context_t *context);
/** Replaces the input parameters. Consumes the dictionary. */
int mmr_input_parameters(mmr_context_t *context, strm_dict_t *parameters);

/** Attaches an output of type "audio", "video", "subpicture" or "file". Returns its id (0 or more), -1 on failure. */
int mmr_output_attach(mmr_context_t *context, const char *url, const char *type);
/** Detaches an output. */
int mmr_output_detach(mmr_context_t *context, int output);
/** Sets output parameters, merged into what was set. Consumes the dictionary. */
int mmr_output_parameters(mmr_context_t *context, int output, strm_dict_t *parameters);

/** Starts playing or recording. */
int mmr_play(mmr_context_t *context);
/** Stops; a recording is complete when this returns. */
int mmr_stop(mmr_context_t *context);
/** Seeks to "TRACK:MILLISECONDS" or "MILLISECONDS". */
int mmr_seek(mmr_context_t *context, const char *position);
/** Sets the speed in thousandths of normal speed; 0 holds. */
int mmr_speed_set(mmr_context_t *context, int speed);
/** Replaces the parameters of a track; track 0 holds the defaults of the next input. Consumes the dictionary. */
int mmr_track_parameters(mmr_context_t *context, unsigned track, strm_dict_t *parameters);

/** The context's last error, or null when no call failed yet. Valid until the next call on the context. */
const mmr_error_info_t *mmr_error_info(mmr_context_t *context);

#ifdef __cplusplus
}
#endif
