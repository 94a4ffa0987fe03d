#pragma once

#include "Check.h"

namespace voro::doctor {

/** Whether what is played is heard, and whether there is something to record from. */
class SoundCheck : public Check {
public:
    const char *name() const override { return "sound"; }
    std::vector<Finding> examine() const override;
};

} // namespace voro::doctor
