#pragma once

#include "kernel/Dataflow.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace kelvo::kernel_detail {

/// What one instruction computes from slots a, x, y and constants c, d. Every operation rounds by
/// itself, in the order written. A sum of many terms is a chain of these.
enum class Code : std::uint8_t {
    product,        ///< x·c
    quotient,       ///< x/c
    addProduct,     ///< a + x·c
    addQuotient,    ///< a + x/c
    addProducts,    ///< (a + x·c) + y·d
    addProductQuot, ///< (a + x·c) + y/d
    addQuotProduct, ///< (a + x/c) + y·d
    addQuotients,   ///< (a + x/c) + y/d
};
inline constexpr std::size_t codeCount = static_cast<std::size_t>(Code::addQuotients) + 1;

/// Instructions of one code that do not depend on each other. Instruction i writes slot dst + i.
/// Its operands are in slots a + i, x + i, y + i and its constants in c[i] and d[i] (dense), or the
/// slots are listed (gathered), or there is only one instruction and all is here (single).
struct Run {
    using Kernel = void (*)(double* slots, const Run& run, const double* constants,
                            const Index* gathered);
    Kernel kernel = nullptr;
    Index count = 0;
    Index dst = 0;
    Index a = 0;
    Index x = 0;
    Index y = 0;
    Index firstGathered = 0; ///< a[0…count), then x, then y
    Index firstConstant = 0; ///< c[0…count), then d
    double c = 0;
    double d = 0;
};

/// A straight-line program over an array of slots. Each slot is written by one instruction, and
/// only from slots that are written before.
struct Tape {
    void play(double* slots) const {
        for (const Run& run : runs)
            run.kernel(slots, run, constants.data(), gathered.data());
    }

    std::vector<Run> runs;
    std::vector<double> constants;
    std::vector<Index> gathered;
};

Run::Kernel singleKernel(Code code);
Run::Kernel denseKernel(Code code);
Run::Kernel gatheredKernel(Code code);

/// A slot read with a sign of +1 or -1.
struct SignedSlot {
    Index slot = 0;
    double sign = 1;

    double read(const double* slots) const { return slots[slot] * sign; }
};

/// The time derivatives of the states, in the order of their slots, and the arithmetic of a
/// Runge–Kutta step over them.
class Derivatives {
public:
    Derivatives() = default;
    explicit Derivatives(std::vector<SignedSlot> slots);

    std::span<const SignedSlot> slots() const { return slots_; }

    /// to[i] = x[i] + h·dx[i], with dx read from the slots `from`.
    void advance(const double* x, const double* from, double h, double* to) const;

    /// to[i] = x[i] + sixth·(k4 + k1 + k2 + k2 + k3 + k3), with k1 … k4 the derivatives in
    /// `stages`.
    void finish(const double* x, const std::array<const double*, 4>& stages, double sixth,
                double* to) const;

private:
    /// Neighbouring states, and what may be taken for granted of their derivatives.
    enum class Order {
        sideBySide, ///< in neighbouring slots too, of one sign
        positive,   ///< anywhere, all of sign +1
        any,
    };
    struct Stretch {
        Index begin = 0;
        Index end = 0;
        Order order = Order::any;
    };

    std::vector<SignedSlot> slots_;
    std::vector<Stretch> stretches_;
};

/// The evaluation of a model as four tapes over one array of slots, laid out as
///
///     0.0 | sources | values of sources only | values for dx | states | … for losses | … the rest
///
/// The states have an order of their own, so that runs read them side by side. They follow the
/// values for dx because dp/dt of an inertance is often the last value computed and dq/dt of the
/// capacitor beside it the flow p/I, often p itself: then all of dx lies side by side.
struct Program {
    Tape hoisted;    ///< needed after a change of a source: what depends on no state
    Tape derivative; ///< after `hoisted`: what dx needs
    Tape rate;       ///< after `derivative`: what the losses need besides
    Tape rest;       ///< after `rate`: every other effort and flow

    static constexpr Index firstSource = 1;
    Index sourceCount = 0;
    Index firstState = 0;
    Index stepSlots = 0; ///< slots that all tapes but `rest` use
    Index allSlots = 0;

    struct Loss {
        Index flow = 0; ///< slot; the sign of a flow does not matter to its loss
        double resistance = 1;
    };

    std::vector<Index> stateSlot; ///< by state variable
    Derivatives dx;
    std::vector<Loss> losses; ///< the resistors, in node order
    std::vector<SignedSlot> effort;
    std::vector<SignedSlot> flow;

    /// Σ (f·R)·f over the losses.
    double dissipated(const double* slots) const {
        double sum = 0;
        for (const Loss& loss : losses) {
            sum += slots[loss.flow] * loss.resistance * slots[loss.flow];
        }
        return sum;
    }
};

/// What a program has to deliver, as references into a dataflow.
struct Outputs {
    struct Loss {
        Ref flow;
        double resistance = 1;
    };

    Index sourceCount = 0;
    std::vector<Ref> dx{}; ///< one a state variable
    std::vector<Loss> losses{};
};

/// Turns a dataflow into tapes: drops what nobody needs, folds products and quotients into the sums
/// that use them, and gathers equal instructions that do not depend on each other into runs. No
/// operation, operand or order of summation changes.
Program compile(const Dataflow& dataflow, const Outputs& outputs);

} // namespace kelvo::kernel_detail
