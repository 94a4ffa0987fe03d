#pragma once

#include <pps/Fd.h>

#include <optional>
#include <string>

namespace voro::renderer {

/** A file from the service. */
struct PassedFile {
    /** The frame queue whose end it is; empty for the file to record into. */
    std::string queue;
    pps::Fd file;
};

/** The next file that the service handed over, nothing when there is none. */
std::optional<PassedFile> takeFile();

} // namespace voro::renderer
