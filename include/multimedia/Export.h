#pragma once

/** Marks what the library shows to programs; everything else stays inside it. */
#define VOROMULTIMEDIA_EXPORT __attribute__((visibility("default")))
