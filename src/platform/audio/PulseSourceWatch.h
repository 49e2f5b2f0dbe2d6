#pragma once

#include <cstdint>

struct pa_context;
struct pa_mainloop;
struct pa_source_output_info;

namespace tessivo {

/// Notices that the PulseAudio source which this process records from has gone, as when an
/// interface is unplugged: the server goes on with the sound of another one and tells ALSA nothing.
/// That somebody gives the process another source by hand is no loss. Notices nothing where there
/// is no such server. Never waits.
class PulseSourceWatch {
public:
    PulseSourceWatch();
    ~PulseSourceWatch();
    PulseSourceWatch(const PulseSourceWatch&) = delete;
    PulseSourceWatch& operator=(const PulseSourceWatch&) = delete;

    /// Takes in what the server has told meanwhile.
    bool isSourceGone();

private:
    static void takeState(pa_context* context, void* self);
    static void takeOutput(pa_context* context, const pa_source_output_info* output, int isEnd,
                           void* self);
    void lookForSource();

    pa_mainloop* loop_;
    pa_context* context_;
    std::uint32_t source_;
    bool isGone_ = false;
};

}  // namespace tessivo
