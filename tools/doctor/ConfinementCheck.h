#pragma once

#include "Check.h"

namespace voro::doctor {

/** What the kernel has to keep a worker away from the user's files. */
class ConfinementCheck : public Check {
public:
    const char *name() const override { return "confinement"; }
    std::vector<Finding> examine() const override;
};

} // namespace voro::doctor
