#include "base/Text.h"
#include "engine/EngineVM.h"

namespace kelvo {

void EngineVM::playNow(const Turn&) {
    if (*running) return;
    riskLatched_ = false;
    running.set(true);
    status.set("PLAY — unitary evolution (PENDING, reversible)");
    log_.e("play", {{"t", sim_->t()}});
    ports_.ticker.start([life = std::weak_ptr(life_)] {
        if (const auto engine = life.lock()) (*engine)->tick();
    });
    proposeNBA();
}

void EngineVM::tick() {
    // A tick that was under way when the loop stopped, or that comes while the person is being
    // asked something, is dropped.
    if (!*running || queue_.held()) return;
    sim_->step(dt_);
    t.set(sim_->t());
    risk.set(sim_->risk());
    rate.set(sim_->dissipation());
    renderState();
    proposeNBA();
    if (!(*rate > rateLimit) || riskLatched_) return;
    riskLatched_ = true;
    pause();
    // Fixed text, see docs/decisions.md.
    notify_.fire("⚠ Risk needs your review",
                 "System auto-paused. Press BOND (Touch ID) to approve, or PLAY to continue.");
    cite("Risk crossed safe limit — auto-paused for human approval.",
         "dissipation rate " + fixed(*rate, 2) + " ≥ limit " + fixed(rateLimit, 2));
}

void EngineVM::pauseNow(const Turn&) {
    running.set(false);
    ports_.ticker.stop();
    status.set("PAUSE — frozen.");
    pending.set(measure());
    log_.e("pause", {{"t", sim_->t()}, {"risk", sim_->risk()}});
    proposeNBA();
}

PendingMeasurement EngineVM::measure() const {
    const std::string title = "collapse@t=" + fixed(sim_->t(), 3);
    const Json document = {{"risk", sim_->risk()},
                           {"state", sim_->state()},
                           {"t", sim_->t()},
                           {"tip", chain_.tip()},
                           {"title", title}};
    return {title, sim_->state(), writeJson(document).value_or("")};
}

void EngineVM::throttleNow(const Turn&) {
    const double halved = *drive * 0.5;
    setDrive(halved >= 0 ? halved : 0);
    cite("Agent throttled source Se → " + fixed(*drive, 2), "lever: reduce ∫R·f² growth rate");
    log_.e("throttle", {{"drive", *drive}});
    proposeNBA();
}

} // namespace kelvo
