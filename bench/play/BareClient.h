#pragma once

#include "Contestants.h"

#include <pulse/pulseaudio.h>

#include <vector>

namespace bench {

/** A client of the sound server that decodes nothing: it stays connected and plays a tone from memory. */
class BareClient : public Contestant {
public:
    BareClient();
    ~BareClient() override;
    std::string name() const override { return "bare client"; }
    int64_t play(const std::string &path) override;
    int64_t seek(int) override { return 0; }
    void stop() override;
    void renew() override {}

private:
    static void changed(pa_context *context, void *self);
    static void writable(pa_stream *stream, size_t length, void *self);

    std::vector<float> m_tone;
    pa_threaded_mainloop *m_loop = nullptr;
    pa_context *m_context = nullptr;
    pa_stream *m_stream = nullptr;
};

} // namespace bench
