#pragma once

#include <string>

namespace voro::renderer {

/*
 * The parts of the worker that bring large libraries along are modules, loaded when they are needed for the first
 * time.
 */

/** Where the modules are: beside the worker, in an installation as in the build tree. */
std::string moduleFolder();

/** A function of a module; null, with a line in the log, when the installation lacks it. */
void *symbolOf(const std::string &module, const char *name);

template<typename Function>
Function functionOf(const std::string &module, const char *name)
{
    return reinterpret_cast<Function>(symbolOf(module, name));
}

} // namespace voro::renderer
