#pragma once

#include "Check.h"

namespace voro::doctor {

/** Whether the daemon answers, and how much it has to do. */
class DaemonCheck : public Check {
public:
    const char *name() const override { return "daemon"; }
    std::vector<Finding> examine() const override;
};

} // namespace voro::doctor
