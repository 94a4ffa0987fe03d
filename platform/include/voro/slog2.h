#pragma once

/* The part of the system logger that hides paths and URLs. */

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Writes an obfuscated copy of a path or URL.
 *
 * Each directory and file name is replaced by its length class (s up to 8 bytes, m up to 16, l above); a scheme, the
 * separators and the extension of the last name stay.
 *
 * @param flags     0
 * @param separator the character that begins an extension, 46 for "."
 * @param reserved  0
 * @param text      the terminated text; may be at most `size` bytes with its end
 * @param size      the size of `output` in bytes
 * @param output    receives the terminated result, cut off to `size` bytes
 * @return 0 on success, else an errno number
 */
int slog2_obfuscate(int flags, int separator, int reserved, const char *text, size_t size, char *output);

#ifdef __cplusplus
}
#endif
