#pragma once

/* Names and handles of the audio manager's stream types. */

#ifdef __cplusplus
extern "C" {
#endif

/** What a stream is for; a stream's type decides how the sound server routes and mixes it. */
typedef enum audio_manager_audio_type {
    AUDIO_TYPE_VOICE = 0,
    AUDIO_TYPE_RINGTONE = 1,
    AUDIO_TYPE_VIDEO_CHAT = 2,
    AUDIO_TYPE_MULTIMEDIA = 3,
    AUDIO_TYPE_INPUT_FEEDBACK = 4,
    AUDIO_TYPE_VOICE_RECORDING = 5,
    AUDIO_TYPE_ALERT = 6,
    AUDIO_TYPE_DEFAULT = 7,
} audio_manager_audio_type_t;

/** The name of a type, for example "voice_recording" for 5; null for a number that is no type. */
const char *audio_manager_get_name_from_type(int type);

/**
 * Hands a handle for a stream of a type out, to be given to a player or recorder, whose stream is then of that type: on
 * Linux the type becomes the stream's media.role. Returns 0, or EINVAL for a number that is no type; no two handles
 * that a process gets are the same. A handle holds nothing and needs not be given back.
 */
int audio_manager_get_handle(int type, unsigned int *handle);
/** The type of a handle, -1 for a number that was never handed out as one. */
int audio_manager_get_type_from_handle(unsigned int handle);

#ifdef __cplusplus
}
#endif
