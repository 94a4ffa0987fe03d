#pragma once

#include <QtCore/QSocketNotifier>

#include <pps/Fd.h>

#include <memory>

namespace voro::renderer {

/**
 * The standard error of workers. One that is a file a worker could cut off or write at any place: it gets a pipe then,
 * and this process writes on what comes.
 */
class ErrorRelay {
public:
    /** What a program gets for its standard error. */
    static int descriptor();

private:
    ErrorRelay();

    pps::Fd m_input;
    pps::Fd m_output;
    std::unique_ptr<QSocketNotifier> m_readable;
};

} // namespace voro::renderer
