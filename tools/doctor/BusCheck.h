#pragma once

#include "Check.h"

namespace voro::doctor {

/** Whether there is a session bus, by which desktops show and command what is playing. */
class BusCheck : public Check {
public:
    const char *name() const override { return "bus"; }
    std::vector<Finding> examine() const override;
};

} // namespace voro::doctor
