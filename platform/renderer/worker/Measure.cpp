#include "Measure.h"

#include "Mp3Length.h"

#include <glib.h>

#include <thread>
#include <utility>

namespace voro::renderer {

namespace {

struct Outcome {
    std::weak_ptr<Measure::Done> done;
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

} // namespace

void Measure::start(const std::string &path, Done done)
{
    m_done = std::make_shared<Done>(std::move(done));
    std::thread([path, weak = std::weak_ptr<Done>(m_done)] {
        if (const auto duration = mp3Length(path)) {
            g_idle_add(deliver, new Outcome{weak, *duration});
        }
    }).detach();
}

} // namespace voro::renderer
