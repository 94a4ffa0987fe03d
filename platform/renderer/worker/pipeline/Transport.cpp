#include "Transport.h"

#include <algorithm>
#include <utility>

namespace voro::renderer {

void Transport::run()
{
    if (m_suspension) {
        m_suspension->isRunning = true;
        return;
    }
    m_hasBegun = true;
    m_isHeld = false;
    m_isAtTarget = false;
    applyState();
}

void Transport::hold()
{
    if (m_suspension) {
        m_suspension->isRunning = false;
        return;
    }
    if (!m_isHeld && !m_seeking) {
        // It has played on from there.
        m_isAtTarget = false;
    }
    m_isHeld = true;
    applyState();
}

void Transport::reset()
{
    m_speed = NormalSpeed;
    m_isHeld = true;
    m_hasBegun = false;
    m_seeking.reset();
    m_next.reset();
    m_isAtTarget = false;
    m_lastPosition = 0;
    m_suspension.reset();
}

void Transport::applyState()
{
    const GstStateChangeReturn change = gst_element_get_state(m_pipeline, nullptr, nullptr, 0);
    // A pipeline that failed has posted the reason. Asked again, a playbin takes itself apart while its threads still
    // run, and hangs.
    if (change == GST_STATE_CHANGE_FAILURE) {
        return;
    }
    // Whoever asks a bin for less while it is on its way, and then for more again, may get neither: the bin drops the
    // rest of its change. Holding waits for the end of the change instead.
    if (!m_isHeld) {
        gst_element_set_state(m_pipeline, GST_STATE_PLAYING);
    } else if (change != GST_STATE_CHANGE_ASYNC) {
        gst_element_set_state(m_pipeline, GST_STATE_PAUSED);
    }
}

void Transport::stateChanged()
{
    if (m_hasBegun) {
        applyState();
    }
}

bool Transport::seek(const Target &target)
{
    if (m_suspension) {
        m_suspension->target = target;
        return true;
    }
    if (isSeeking() && target.speed == m_speed) {
        m_next = target;
        return true;
    }
    return seekNow(target);
}

bool Transport::seekNow(const Target &target)
{
    // A streaming thread that waits for the next medium would hold the seek up.
    m_succession.release();
    const auto time = target.time * static_cast<gint64>(GST_MSECOND);
    const bool isForward = !target.speed.isBackward();
    const bool isDone = gst_element_seek(m_pipeline, target.speed.thousandths / 1000.0, GST_FORMAT_TIME,
                                         static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE),
                                         GST_SEEK_TYPE_SET, isForward ? time : 0, GST_SEEK_TYPE_SET,
                                         isForward ? static_cast<gint64>(GST_CLOCK_TIME_NONE) : time);
    if (isDone) {
        m_speed = target.speed;
        m_seeking = target;
        m_isAtTarget = true;
        m_lastPosition = target.time;
        m_next.reset();
    }
    return isDone;
}

void Transport::seekDone()
{
    m_seeking.reset();
    if (const auto next = std::exchange(m_next, std::nullopt)) {
        seekNow(*next);
    }
}

int64_t Transport::position() const
{
    if (m_suspension) {
        return m_suspension->target.time;
    }
    if (m_next || m_seeking) {
        return m_next ? m_next->time : m_seeking->time;
    }
    if (m_isHeld && m_isAtTarget) {
        return m_lastPosition;
    }
    if (gint64 position = 0; gst_element_query_position(m_pipeline, GST_FORMAT_TIME, &position)) {
        m_lastPosition = std::max<int64_t>(0, position / static_cast<gint64>(GST_MSECOND));
    }
    return m_lastPosition;
}

bool Transport::resume()
{
    const Suspension suspension = *std::exchange(m_suspension, std::nullopt);
    if (suspension.target.time > 0 || suspension.target.speed != m_speed) {
        seek(suspension.target);
    } else {
        // The pipeline may not ask again for the next medium: that one is loaded at the end.
        m_succession.release();
    }
    return suspension.isRunning;
}

} // namespace voro::renderer
