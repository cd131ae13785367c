#include "kernel/Tape.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace kelvo::kernel_detail {

namespace {

constexpr Index none = std::numeric_limits<Index>::max();
constexpr Index zeroCell = 0;

/// An instruction on cells: places that have no slot yet.
struct Instruction {
    Code code{};
    Index level = 0;
    Index dst = 0;
    std::array<Index, 3> operand{zeroCell, zeroCell, zeroCell}; ///< a, x, y; unused ones read 0.0
    double c = 1;
    double d = 1;
};
using Instructions = std::vector<Instruction>;

int operandsOf(Code code) {
    switch (code) {
    case Code::product:
    case Code::quotient:
    case Code::addProduct:
    case Code::addQuotient:
        return 2;
    case Code::addProducts:
    case Code::addProductQuot:
    case Code::addQuotProduct:
    case Code::addQuotients:
        break;
    }
    return 3;
}

int firstOperandOf(Code code) {
    return code == Code::product || code == Code::quotient ? 1 : 0;
}

/// Which of the two factors an instruction divides by.
bool dividesByC(Code code) {
    return code == Code::quotient || code == Code::addQuotient || code == Code::addQuotProduct ||
           code == Code::addQuotients;
}
bool dividesByD(Code code) {
    return code == Code::addProductQuot || code == Code::addQuotients;
}

/// The same instruction with a product in place of the first or second quotient.
Code withProductOfC(Code code) {
    switch (code) {
    case Code::quotient:
        return Code::product;
    case Code::addQuotient:
        return Code::addProduct;
    case Code::addQuotProduct:
        return Code::addProducts;
    case Code::addQuotients:
        return Code::addProductQuot;
    case Code::product:
    case Code::addProduct:
    case Code::addProducts:
    case Code::addProductQuot:
        break;
    }
    return code;
}
Code withProductOfD(Code code) {
    switch (code) {
    case Code::addProductQuot:
        return Code::addProducts;
    case Code::addQuotients:
        return Code::addQuotProduct;
    case Code::product:
    case Code::quotient:
    case Code::addProduct:
    case Code::addQuotient:
    case Code::addProducts:
    case Code::addQuotProduct:
        break;
    }
    return code;
}

/// True when 1/c is a number exactly: then x·(1/c) and x/c round the same number, and are equal.
bool hasExactReciprocal(double c) {
    int exponent = 0;
    return std::isfinite(c) && std::abs(std::frexp(c, &exponent)) == 0.5 && std::isfinite(1.0 / c);
}

/// Divides by no power of two in a run that divides by nothing else.
void multiplyWhereExact(std::span<Instruction> run) {
    const auto exactC = [](const Instruction& each) { return hasExactReciprocal(each.c); };
    if (dividesByC(run.front().code) && std::ranges::all_of(run, exactC)) {
        for (Instruction& each : run) {
            each.code = withProductOfC(each.code);
            each.c = 1.0 / each.c;
        }
    }
    const auto exactD = [](const Instruction& each) { return hasExactReciprocal(each.d); };
    if (dividesByD(run.front().code) && std::ranges::all_of(run, exactD)) {
        for (Instruction& each : run) {
            each.code = withProductOfD(each.code);
            each.d = 1.0 / each.d;
        }
    }
}

/// A term of a sum as the tape adds it: cell·factor or cell/factor.
struct Term {
    Index value = 0;
    bool divides = false;
    double factor = 1;
};

class Compiler {
public:
    Compiler(const Dataflow& dataflow, const Outputs& outputs)
        : dataflow_(dataflow), outputs_(outputs), cellOf_(dataflow.values.size(), none),
          needed_(dataflow.values.size(), false), uses_(dataflow.values.size(), 0) {}

    Program run() {
        placeLeaves();
        countUses();

        for (const Ref ref : outputs_.dx)
            needed_[ref.value] = true;
        lowerNeeded(hoisted_, derivative_);
        for (const Outputs::Loss& loss : outputs_.losses)
            needed_[loss.flow.value] = true;
        lowerNeeded(hoisted_, rate_);
        for (const Ref ref : dataflow_.effort)
            needed_[ref.value] = true;
        for (const Ref ref : dataflow_.flow)
            needed_[ref.value] = true;
        lowerNeeded(rest_, rest_);

        layOut();
        bindOutputs();
        return std::move(program_);
    }

private:
    Index sourceCell(Index slot) const { return 1 + slot; }
    Index stateCell(Index variable) const { return 1 + outputs_.sourceCount + variable; }
    Index stateCount() const { return static_cast<Index>(outputs_.dx.size()); }
    bool isStateCell(Index cell) const {
        return cell >= stateCell(0) && cell < stateCell(stateCount());
    }

    void placeLeaves() {
        cellCount_ = 1 + outputs_.sourceCount + stateCount();
        for (std::size_t v = 0; v < dataflow_.values.size(); ++v) {
            const Value& value = dataflow_.values[v];
            if (value.kind == Value::Kind::zero) cellOf_[v] = zeroCell;
            if (value.kind == Value::Kind::source) cellOf_[v] = sourceCell(value.operand);
            if (value.kind == Value::Kind::state) cellOf_[v] = stateCell(value.operand);
        }
    }

    void countUses() {
        for (const Value& value : dataflow_.values) {
            if (value.kind == Value::Kind::product || value.kind == Value::Kind::quotient) {
                ++uses_[value.operand];
            }
        }
        for (const Ref term : dataflow_.terms)
            ++uses_[term.value];
        for (const Ref ref : outputs_.dx)
            ++uses_[ref.value];
    }

    /// A product costs so little that a sum computes it anew rather than wait for it; a quotient
    /// only where nobody else wants it. What depends on sources alone is not drawn into a sum that
    /// depends on the state.
    Term termOf(const Value& sum, Ref ref) const {
        const Value& value = dataflow_.values[ref.value];
        const double sign = ref.negated ? -1.0 : 1.0;
        const bool folds = value.kind == Value::Kind::product ||
                           (value.kind == Value::Kind::quotient && uses_[ref.value] == 1);
        if (folds && value.dependsOnState == sum.dependsOnState && cellOf_[ref.value] == none) {
            return {value.operand, value.kind == Value::Kind::quotient, sign * value.constant};
        }
        return {ref.value, false, sign};
    }

    /// Gives every needed value a cell, and every value that it is computed from.
    void lowerNeeded(Instructions& ofSources, Instructions& ofStates) {
        for (std::size_t v = dataflow_.values.size(); v-- > 0;) {
            if (!needed_[v] || cellOf_[v] != none) continue;
            const Value& value = dataflow_.values[v];
            needed_[value.operand] = true;
            if (value.kind != Value::Kind::sum) continue;
            for (const Ref ref : dataflow_.termsOf(value))
                needed_[termOf(value, ref).value] = true;
        }
        for (std::size_t v = 0; v < dataflow_.values.size(); ++v) {
            if (!needed_[v] || cellOf_[v] != none) continue;
            const Value& value = dataflow_.values[v];
            cellOf_[v] = lower(value, value.dependsOnState ? ofStates : ofSources);
        }
    }

    Index lower(const Value& value, Instructions& list) {
        if (value.kind == Value::Kind::sum) return lowerSum(value, list);
        const Code code = value.kind == Value::Kind::product ? Code::product : Code::quotient;
        return emit(list, code, {zeroCell, cellOf_[value.operand], zeroCell}, value.constant, 1);
    }

    Index lowerSum(const Value& value, Instructions& list) {
        Index sum = cellOf_[value.operand];
        const auto refs = dataflow_.termsOf(value);
        std::size_t i = 0;
        for (; i + 1 < refs.size(); i += 2) {
            const Term x = termOf(value, refs[i]);
            const Term y = termOf(value, refs[i + 1]);
            const Code code = x.divides ? (y.divides ? Code::addQuotients : Code::addQuotProduct)
                                        : (y.divides ? Code::addProductQuot : Code::addProducts);
            sum = emit(list, code, {sum, cellOf_[x.value], cellOf_[y.value]}, x.factor, y.factor);
        }
        if (i < refs.size()) {
            const Term x = termOf(value, refs[i]);
            const Code code = x.divides ? Code::addQuotient : Code::addProduct;
            sum = emit(list, code, {sum, cellOf_[x.value], zeroCell}, x.factor, 1);
        }
        return sum;
    }

    Index emit(Instructions& list, Code code, std::array<Index, 3> operand, double c, double d) {
        list.push_back({.code = code, .dst = cellCount_, .operand = operand, .c = c, .d = d});
        return cellCount_++;
    }

    void layOut() {
        levelOf_.assign(cellCount_, 0);
        slotOf_.assign(cellCount_, none);
        for (Instructions* list : {&hoisted_, &derivative_, &rate_, &rest_})
            schedule(*list);

        slotOf_[zeroCell] = nextSlot_++;
        program_.sourceCount = outputs_.sourceCount;
        program_.stateSlot.resize(stateCount());
        for (Index s = 0; s < outputs_.sourceCount; ++s)
            slotOf_[sourceCell(s)] = nextSlot_++;
        placeResults(hoisted_);
        placeResults(derivative_);
        placeStates();
        pastStates_ = nextSlot_;
        placeResults(rate_);
        program_.stepSlots = nextSlot_;
        placeResults(rest_);
        program_.allSlots = nextSlot_;

        program_.hoisted = assemble(hoisted_);
        program_.derivative = assemble(derivative_);
        program_.rate = assemble(rate_);
        program_.rest = assemble(rest_);
    }

    /// Orders a list so that equal instructions that do not depend on each other are neighbours.
    void schedule(Instructions& list) {
        for (Instruction& each : list) {
            for (const Index cell : each.operand)
                each.level = std::max(each.level, levelOf_[cell]);
            levelOf_[each.dst] = ++each.level;
        }
        for (const Instruction& each : list)
            levelOf_[each.dst] = 0;
        std::ranges::stable_sort(
            list, {}, [](const Instruction& each) { return std::pair(each.level, each.code); });
    }

    static std::size_t runEnd(const Instructions& list, std::size_t begin) {
        std::size_t end = begin + 1;
        while (end < list.size() && list[end].level == list[begin].level &&
               list[end].code == list[begin].code) {
            ++end;
        }
        return end;
    }

    /// Runs of some length start at an even slot and are followed by one, so that the pairs in
    /// which a processor stores them are the pairs in which it loads them: a load across two fresh
    /// stores waits for both.
    static constexpr std::size_t worthAligning = 4;

    void align() {
        if (nextSlot_ % 2 == 0) return;
        isGap_.resize(nextSlot_ + 1, false);
        isGap_[nextSlot_++] = true;
    }

    void placeResults(const Instructions& list) {
        for (std::size_t begin = 0; begin < list.size();) {
            const std::size_t end = runEnd(list, begin);
            const bool aligned = end - begin >= worthAligning;
            if (aligned) align();
            for (; begin < end; ++begin)
                slotOf_[list[begin].dst] = nextSlot_++;
            if (aligned) align();
        }
    }

    /// States lie side by side in the order in which runs read them.
    void placeStates() {
        align();
        program_.firstState = nextSlot_;
        for (const Instructions* list : {&derivative_, &rate_}) {
            for (std::size_t begin = 0; begin < list->size(); begin = runEnd(*list, begin)) {
                const auto run = std::span(*list).subspan(begin, runEnd(*list, begin) - begin);
                for (std::size_t position = 0; position < 3; ++position) {
                    if (run.size() >= worthAligning) align();
                    for (const Instruction& each : run)
                        placeState(each.operand[position]);
                }
            }
        }
        for (Index k = 0; k < stateCount(); ++k)
            placeState(stateCell(k));
    }

    void placeState(Index cell) {
        if (!isStateCell(cell) || slotOf_[cell] != none) return;
        slotOf_[cell] = nextSlot_;
        program_.stateSlot[cell - stateCell(0)] = nextSlot_++;
    }

    /// The derivatives by state slot. A gap among the states is stepped like a state, with a
    /// derivative that is always 0.0: where possible the gap that keeps the others side by side.
    std::vector<SignedSlot> placedDerivatives() const {
        std::vector<SignedSlot> dx(pastStates_ - program_.firstState);
        for (Index k = 0; k < stateCount(); ++k) {
            dx[program_.stateSlot[k] - program_.firstState] = slotOf(outputs_.dx[k]);
        }
        for (std::size_t i = 1; i < dx.size(); ++i) {
            const SignedSlot before = dx[i - 1];
            if (isGap(program_.firstState + static_cast<Index>(i)) && isGap(before.slot + 1)) {
                dx[i] = {before.slot + 1, before.sign};
            }
        }
        return dx;
    }

    bool isGap(Index slot) const { return slot < isGap_.size() && isGap_[slot]; }

    Tape assemble(Instructions& list) const {
        Tape tape;
        for (std::size_t begin = 0; begin < list.size();) {
            const std::size_t end = runEnd(list, begin);
            multiplyWhereExact(std::span(list).subspan(begin, end - begin));
            tape.runs.push_back(assembleRun(std::span(list).subspan(begin, end - begin), tape));
            begin = end;
        }
        return tape;
    }

    Run assembleRun(std::span<const Instruction> list, Tape& tape) const {
        const Instruction& first = list.front();
        Run run{.count = static_cast<Index>(list.size()),
                .dst = slotOf_[first.dst],
                .a = slotOf_[first.operand[0]],
                .x = slotOf_[first.operand[1]],
                .y = slotOf_[first.operand[2]],
                .firstGathered = static_cast<Index>(tape.gathered.size()),
                .firstConstant = static_cast<Index>(tape.constants.size()),
                .c = first.c,
                .d = first.d};
        if (list.size() == 1) {
            run.kernel = singleKernel(first.code);
            return run;
        }
        for (const Instruction& each : list)
            tape.constants.push_back(each.c);
        for (const Instruction& each : list)
            tape.constants.push_back(each.d);
        if (isDense(list)) {
            run.kernel = denseKernel(first.code);
            return run;
        }
        run.kernel = gatheredKernel(first.code);
        for (std::size_t position = 0; position < 3; ++position) {
            for (const Instruction& each : list) {
                tape.gathered.push_back(slotOf_[each.operand[position]]);
            }
        }
        return run;
    }

    bool isDense(std::span<const Instruction> list) const {
        const Instruction& first = list.front();
        const auto from = static_cast<std::size_t>(firstOperandOf(first.code));
        const auto to = static_cast<std::size_t>(operandsOf(first.code));
        for (std::size_t i = 0; i < list.size(); ++i) {
            for (std::size_t position = from; position < to; ++position) {
                const Index expected = slotOf_[first.operand[position]] + static_cast<Index>(i);
                if (slotOf_[list[i].operand[position]] != expected) return false;
            }
        }
        return true;
    }

    SignedSlot slotOf(Ref ref) const {
        return {slotOf_[cellOf_[ref.value]], ref.negated ? -1.0 : 1.0};
    }

    void bindOutputs() {
        program_.dx = Derivatives(placedDerivatives());
        for (const Outputs::Loss& loss : outputs_.losses) {
            program_.losses.push_back({slotOf(loss.flow).slot, loss.resistance});
        }
        for (const Ref ref : dataflow_.effort)
            program_.effort.push_back(slotOf(ref));
        for (const Ref ref : dataflow_.flow)
            program_.flow.push_back(slotOf(ref));
    }

    const Dataflow& dataflow_;
    const Outputs& outputs_;
    std::vector<Index> cellOf_; ///< by value
    std::vector<bool> needed_;  ///< by value
    std::vector<Index> uses_;   ///< by value
    Index cellCount_ = 0;
    Instructions hoisted_;
    Instructions derivative_;
    Instructions rate_;
    Instructions rest_;
    std::vector<Index> levelOf_; ///< by cell, within the list at hand
    std::vector<Index> slotOf_;  ///< by cell
    std::vector<bool> isGap_;    ///< by slot
    Index nextSlot_ = 0;
    Index pastStates_ = 0;
    Program program_;
};

} // namespace

Program compile(const Dataflow& dataflow, const Outputs& outputs) {
    return Compiler(dataflow, outputs).run();
}

} // namespace kelvo::kernel_detail
