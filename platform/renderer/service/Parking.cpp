#include "Parking.h"

#include <algorithm>
#include <map>
#include <ranges>
#include <tuple>

namespace voro::renderer {

void Parking::add(Guest &guest, pid_t owner)
{
    forget(&guest);
    m_resting.push_back({&guest, owner, {}});
    m_resting.back().since.start();
    armTimer();
}

void Parking::remove(const Guest &guest)
{
    if (forget(&guest)) {
        armTimer();
    }
}

/** Whether it rested. */
bool Parking::forget(const Guest *guest)
{
    return std::erase_if(m_resting, [guest](const Resting &resting) { return resting.guest == guest; }) > 0;
}

std::pair<Parking::Guest *, qint64> Parking::next() const
{
    std::pair<Guest *, qint64> next{nullptr, 0};
    std::map<pid_t, size_t> counts;
    for (const Resting &resting : std::views::reverse(m_resting)) {
        const int delay = ++counts[resting.owner] > MostResting ? m_delays.beyondMost : m_delays.usual;
        const qint64 left = delay - resting.since.elapsed();
        if (!next.first || left <= next.second) {
            next = {resting.guest, left};
        }
    }
    return next;
}

void Parking::parkRested()
{
    for (auto [guest, left] = next(); guest && left <= 0; std::tie(guest, left) = next()) {
        forget(guest);
        guest->park();
    }
    armTimer();
}

void Parking::armTimer()
{
    if (const auto [guest, left] = next(); guest) {
        m_timer.start(static_cast<int>(std::max<qint64>(left, 1)));
    } else {
        m_timer.stop();
    }
}

} // namespace voro::renderer
