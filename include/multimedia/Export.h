#pragma once

/** Exports a symbol from the library; all other symbols are hidden. */
#define VOROMULTIMEDIA_EXPORT __attribute__((visibility("default")))
