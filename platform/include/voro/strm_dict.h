#pragma once

/* Stream dictionaries: ordered text-to-text maps that are handed to renderer functions. */

#ifdef __cplusplus
extern "C" {
#endif

/** A dictionary; its functions take and give handles. */
typedef struct strm_dict strm_dict_t;

/** An empty dictionary, or null when memory is short. */
strm_dict_t *strm_dict_new(void);

/**
 * Sets an entry and returns the dictionary to use from then on; the handle passed in is no longer valid. Null on
 * failure (a null argument, or no memory): then the handle passed in stays valid.
 */
strm_dict_t *strm_dict_set(strm_dict_t *dictionary, const char *key, const char *value);

/** Frees a dictionary that was not handed to a renderer function; null is allowed. */
void strm_dict_destroy(strm_dict_t *dictionary);

#ifdef __cplusplus
}
#endif
