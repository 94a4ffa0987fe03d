#pragma once

#include <initializer_list>

namespace voro {

/** A descriptor that becomes readable when one of these signals comes. It is there for the rest of the process. */
int signalEvent(std::initializer_list<int> signals);

} // namespace voro
