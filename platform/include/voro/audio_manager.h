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

#ifdef __cplusplus
}
#endif
