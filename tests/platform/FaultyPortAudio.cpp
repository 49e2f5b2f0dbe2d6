// Preloaded into the audio program: the call of PortAudio that FAULTY_CALL names hangs, or crashes
// when FAULT says so, as drivers do.
#include <dlfcn.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string_view>

namespace {

template <typename Function>
Function* passing(const char* name) {
    if (name == std::string_view(std::getenv("FAULTY_CALL"))) {
        if (std::getenv("FAULT") == std::string_view("crash")) {
            std::raise(SIGSEGV);
        }
        while (true) {
            pause();
        }
    }
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

int Pa_Initialize() {
    return passing<int()>("Pa_Initialize")();
}
int Pa_OpenStream(void** stream, const void* input, const void* output, double rate,
                  unsigned long frames, unsigned long flags, void* callback, void* data) {
    return passing<decltype(Pa_OpenStream)>("Pa_OpenStream")(stream, input, output, rate, frames,
                                                             flags, callback, data);
}
int Pa_StartStream(void* stream) {
    return passing<int(void*)>("Pa_StartStream")(stream);
}
int Pa_CloseStream(void* stream) {
    return passing<int(void*)>("Pa_CloseStream")(stream);
}
}
