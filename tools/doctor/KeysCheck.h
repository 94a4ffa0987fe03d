#pragma once

#include "Check.h"

namespace voro::doctor {

/** Whether the devices can be read that media keys come from. */
class KeysCheck : public Check {
public:
    const char *name() const override { return "keys"; }
    std::vector<Finding> examine() const override;
};

} // namespace voro::doctor
