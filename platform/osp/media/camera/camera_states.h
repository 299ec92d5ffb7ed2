// The states of a camera session, and what leads from one to the next.
#pragma once

#include <array>
#include <optional>

namespace Osp::Media {

/// kDisconnected is a preview without a device; docs/camera-states.md has the picture.
enum class SessionState { kOff, kOn, kPreviewing, kFocusing, kCapturing, kDisconnected };

enum class SessionEvent {
    kPowerOn,
    kPowerOff,
    kStartPreview,
    kStopPreview,
    kStartFocus,
    kFocusDone,
    kStartCapture,
    kCaptureDone,
    kFail,
    kUnplug,
    kPlug,
};

struct SessionTransition {
    SessionState from;
    SessionEvent event;
    SessionState to;
};

/// Whatever is not here is refused, or cannot happen.
constexpr std::array kSessionTransitions = {
    SessionTransition{SessionState::kOff, SessionEvent::kPowerOn, SessionState::kOn},

    SessionTransition{SessionState::kOn, SessionEvent::kStartPreview, SessionState::kPreviewing},
    SessionTransition{SessionState::kOn, SessionEvent::kPowerOff, SessionState::kOff},

    SessionTransition{SessionState::kPreviewing, SessionEvent::kStopPreview, SessionState::kOn},
    SessionTransition{SessionState::kPreviewing, SessionEvent::kFail, SessionState::kOn},
    SessionTransition{SessionState::kPreviewing, SessionEvent::kStartFocus,
                      SessionState::kFocusing},
    SessionTransition{SessionState::kPreviewing, SessionEvent::kStartCapture,
                      SessionState::kCapturing},
    SessionTransition{SessionState::kPreviewing, SessionEvent::kUnplug,
                      SessionState::kDisconnected},

    SessionTransition{SessionState::kFocusing, SessionEvent::kFocusDone, SessionState::kPreviewing},
    SessionTransition{SessionState::kFocusing, SessionEvent::kStopPreview, SessionState::kOn},
    SessionTransition{SessionState::kFocusing, SessionEvent::kFail, SessionState::kOn},
    SessionTransition{SessionState::kFocusing, SessionEvent::kUnplug, SessionState::kDisconnected},

    SessionTransition{SessionState::kCapturing, SessionEvent::kCaptureDone,
                      SessionState::kPreviewing},
    SessionTransition{SessionState::kCapturing, SessionEvent::kStopPreview, SessionState::kOn},
    SessionTransition{SessionState::kCapturing, SessionEvent::kFail, SessionState::kOn},
    SessionTransition{SessionState::kCapturing, SessionEvent::kUnplug, SessionState::kDisconnected},

    SessionTransition{SessionState::kDisconnected, SessionEvent::kStopPreview, SessionState::kOn},
    SessionTransition{SessionState::kDisconnected, SessionEvent::kFail, SessionState::kOn},
    SessionTransition{SessionState::kDisconnected, SessionEvent::kPlug, SessionState::kPreviewing},
};

constexpr std::optional<SessionState> NextState(SessionState from, SessionEvent event) {
    for (const SessionTransition& transition : kSessionTransitions) {
        if (transition.from == from && transition.event == event) return transition.to;
    }
    return std::nullopt;
}

constexpr bool IsPreviewing(SessionState state) {
    return NextState(state, SessionEvent::kStopPreview).has_value();
}

constexpr bool EachTransitionIsUnique() {
    for (const SessionTransition& a : kSessionTransitions) {
        if (NextState(a.from, a.event) != a.to) return false;
    }
    return true;
}
static_assert(EachTransitionIsUnique());
static_assert(!NextState(SessionState::kOn, SessionEvent::kStartCapture));
static_assert(!NextState(SessionState::kCapturing, SessionEvent::kStartCapture));
static_assert(!NextState(SessionState::kDisconnected, SessionEvent::kStartCapture));

}  // namespace Osp::Media
