#include "Measure.h"

#include "FileFormat.h"
#include "Libav.h"
#include "Mp3Length.h"

#include <glib.h>

#include <thread>
#include <utility>

namespace voro::renderer {

namespace {

struct Outcome {
    std::weak_ptr<Measure::Measured> done;
    int64_t duration;
};

gboolean deliver(gpointer data)
{
    const std::unique_ptr<Outcome> outcome(static_cast<Outcome *>(data));
    if (const auto done = outcome->done.lock()) {
        (*done)(outcome->duration);
    }
    return G_SOURCE_REMOVE;
}

int64_t lengthOf(const std::string &path, bool isKnown)
{
    if (const auto length = mp3Length(path)) {
        return *length;
    }
    return isKnown && !hasGuessedLength(path) ? 0 : measureWithLibav(path);
}

} // namespace

void Measure::start(const std::string &path, bool isKnown, Measured done)
{
    m_done = std::make_shared<Measured>(std::move(done));
    std::thread([path, isKnown, weak = std::weak_ptr<Measured>(m_done)] {
        if (const int64_t duration = lengthOf(path, isKnown); duration > 0) {
            g_idle_add(deliver, new Outcome{weak, duration});
        }
    }).detach();
}

} // namespace voro::renderer
