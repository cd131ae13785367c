#pragma once

#include "compliance/RoleMap.h"
#include "compliance/SOC2Mesh.h"
#include "engine/Records.h"

#include <optional>

namespace kelvo {

/// What the simulation says about itself when no readiness mesh is loaded.
struct SimulationInputs {
    bool pending = false; ///< a measurement is staged
    bool running = false;
    double firstState = 0; ///< first entry of the state vector, 0 where it is empty
    double rate = 0;       ///< dissipation rate
    double risk = 0;       ///< accumulated dissipation
    double drive = 0;      ///< effort of the source
};

/// What the verified person's role says about their work.
struct RoleInputs {
    bool readonly = false;
    double completion = 0;                  ///< closed share of the role's controls, 0 to 1
    std::optional<RoleMap::Control> next{}; ///< first control that is not closed
};

/// Everything that the choice of the two cards depends on, gathered by the engine.
struct CardInputs {
    bool verified = false;             ///< a person has proved their identity
    std::optional<RoleInputs> tasks{}; ///< for a role other than the owner that has controls
    const SOC2Mesh* mesh = nullptr;    ///< none where no readiness mesh is loaded
    double readiness = 0;              ///< 0 to 1
    int metCount = 0;
    SimulationInputs simulation{};
};

/// The agent's card and the person's.
struct Cards {
    NBA agent;
    NBA human;

    bool operator==(const Cards&) const = default;
};

/// The dissipation-rate limit of the run loop and of its cards.
inline constexpr double rateLimit = 0.3;

/// The two cards, by a fixed order of priority: identity, the person's role tasks, readiness gaps,
/// and, where no mesh is loaded, the simulation itself.
Cards chooseCards(const CardInputs& inputs);

/// The cards of the simulation alone.
Cards simulationCards(const SimulationInputs& inputs);

} // namespace kelvo
