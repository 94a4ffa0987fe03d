#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace voro::multimedia {

/** Stores a value; false when it equals the stored one. */
template<typename Value>
bool replace(Value &stored, const Value &value)
{
    if (stored == value) {
        return false;
    }
    stored = value;
    return true;
}

/** Truncates toward zero. Clamps to the range of the type; NaN becomes 0. */
template<typename Number>
Number truncated(double value)
{
    if (std::isnan(value)) {
        return 0;
    }
    constexpr double lowest = std::numeric_limits<Number>::min();
    constexpr double highest = std::numeric_limits<Number>::max();
    return static_cast<Number>(std::clamp(value, lowest, highest));
}

} // namespace voro::multimedia
