#pragma once

#include "Check.h"

namespace voro::doctor {

/** Whether there is a display for films. */
class WindowCheck : public Check {
public:
    const char *name() const override { return "window"; }
    std::vector<Finding> examine() const override;
};

} // namespace voro::doctor
