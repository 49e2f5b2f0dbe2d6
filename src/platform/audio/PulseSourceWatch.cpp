#include "platform/audio/PulseSourceWatch.h"

#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/mainloop.h>
#include <pulse/operation.h>
#include <pulse/proplist.h>
#include <pulse/subscribe.h>
#include <unistd.h>

#include <string>

namespace tessivo {
namespace {

// Operations go on by themselves.
void letGo(pa_operation* operation) {
    if (operation != nullptr) {
        pa_operation_unref(operation);
    }
}

}  // namespace

PulseSourceWatch::PulseSourceWatch()
    : loop_(pa_mainloop_new()),
      context_(pa_context_new(pa_mainloop_get_api(loop_), "Tessivo")),
      source_(PA_INVALID_INDEX) {
    pa_context_set_state_callback(context_, takeState, this);
    pa_context_connect(context_, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
}

PulseSourceWatch::~PulseSourceWatch() {
    pa_context_set_state_callback(context_, nullptr, nullptr);
    pa_context_disconnect(context_);
    pa_context_unref(context_);
    pa_mainloop_free(loop_);
}

bool PulseSourceWatch::isSourceGone() {
    while (pa_mainloop_iterate(loop_, 0, nullptr) > 0) {
    }
    return isGone_;
}

void PulseSourceWatch::takeState(pa_context* context, void* self) {
    if (pa_context_get_state(context) != PA_CONTEXT_READY) {
        return;
    }
    // The server tells of a source's end before it answers where its listeners have gone.
    pa_context_set_subscribe_callback(
        context,
        [](pa_context*, pa_subscription_event_type_t event, std::uint32_t index, void* receiver) {
            auto& watch = *static_cast<PulseSourceWatch*>(receiver);
            if ((event & PA_SUBSCRIPTION_EVENT_FACILITY_MASK) == PA_SUBSCRIPTION_EVENT_SOURCE) {
                watch.isGone_ |=
                    (event & PA_SUBSCRIPTION_EVENT_TYPE_MASK) == PA_SUBSCRIPTION_EVENT_REMOVE &&
                    index == watch.source_;
            } else {
                watch.lookForSource();
            }
        },
        self);
    letGo(pa_context_subscribe(
        context,
        static_cast<pa_subscription_mask_t>(PA_SUBSCRIPTION_MASK_SOURCE |
                                            PA_SUBSCRIPTION_MASK_SOURCE_OUTPUT),
        nullptr, nullptr));
    static_cast<PulseSourceWatch*>(self)->lookForSource();
}

void PulseSourceWatch::lookForSource() {
    letGo(pa_context_get_source_output_info_list(context_, takeOutput, this));
}

void PulseSourceWatch::takeOutput(pa_context*, const pa_source_output_info* output, int isEnd,
                                  void* self) {
    if (isEnd != 0) {
        return;
    }
    const char* process = pa_proplist_gets(output->proplist, PA_PROP_APPLICATION_PROCESS_ID);
    if (process != nullptr && process == std::to_string(getpid())) {
        static_cast<PulseSourceWatch*>(self)->source_ = output->source;
    }
}

}  // namespace tessivo
