#pragma once

#include <cstdint>
#include <string>

/** What an attacker finds around a worker. */
struct Surroundings {
    /** Of the user: with a file "file", a server's socket "server", and the abstract socket of the same name. */
    std::string folder;
    /** Where a server of this machine listens. */
    uint16_t port = 0;
    /** Memory that another program of the user shares. */
    int segment = 0;
    /** The descriptor that the results are written to. */
    int output = 1;
};

/**
 * Tries what an attacker would and writes a line for each attempt, separated by '=': "ATTEMPT" and the process, the
 * attempt's name, the errno number, the layers that prevent it, and the kind of worker that may do it.
 */
void tryAll(const Surroundings &surroundings);
