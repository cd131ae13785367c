#include "kernel/Tape.h"

#include <array>
#include <utility>

namespace kelvo::kernel_detail {

namespace {

template <Code code>
double compute(double a, double x, double c, [[maybe_unused]] double y, [[maybe_unused]] double d) {
    constexpr bool divides = code == Code::quotient || code == Code::addQuotient ||
                             code == Code::addQuotProduct || code == Code::addQuotients;
    const double first = divides ? x / c : x * c;
    if constexpr (code == Code::product || code == Code::quotient) {
        return first;
    } else if constexpr (code == Code::addProduct || code == Code::addQuotient) {
        return a + first;
    } else if constexpr (code == Code::addProducts || code == Code::addQuotProduct) {
        return a + first + y * d;
    } else {
        return a + first + y / d;
    }
}

template <Code code>
void single(double* slots, const Run& run, const double*, const Index*) {
    slots[run.dst] = compute<code>(slots[run.a], slots[run.x], run.c, slots[run.y], run.d);
}

// The slots that a run writes are never among those that it reads.
template <Code code>
void computeEach(std::size_t count, double* __restrict dst, const double* __restrict a,
                 const double* __restrict x, const double* __restrict c, const double* __restrict y,
                 const double* __restrict d) {
    for (std::size_t i = 0; i < count; ++i)
        dst[i] = compute<code>(a[i], x[i], c[i], y[i], d[i]);
}

template <Code code>
void dense(double* slots, const Run& run, const double* constants, const Index*) {
    const double* c = constants + run.firstConstant;
    computeEach<code>(run.count, slots + run.dst, slots + run.a, slots + run.x, c, slots + run.y,
                      c + run.count);
}

template <Code code>
void gathered(double* slots, const Run& run, const double* constants, const Index* indices) {
    double* __restrict dst = slots + run.dst;
    const double* from = slots;
    const double* c = constants + run.firstConstant;
    const double* d = c + run.count;
    const Index count = run.count;
    const Index* a = indices + run.firstGathered;
    const Index* x = a + count;
    const Index* y = x + count;
    for (Index i = 0; i < count; ++i) {
        dst[i] = compute<code>(from[a[i]], from[x[i]], c[i], from[y[i]], d[i]);
    }
}

using Kernels = std::array<Run::Kernel, codeCount>;

template <std::size_t... codes>
constexpr std::array<Kernels, 3> kernelTable(std::index_sequence<codes...>) {
    return {Kernels{single<static_cast<Code>(codes)>...},
            Kernels{dense<static_cast<Code>(codes)>...},
            Kernels{gathered<static_cast<Code>(codes)>...}};
}

constexpr std::array<Kernels, 3> kernels = kernelTable(std::make_index_sequence<codeCount>());

} // namespace

Run::Kernel singleKernel(Code code) {
    return kernels[0][static_cast<std::size_t>(code)];
}
Run::Kernel denseKernel(Code code) {
    return kernels[1][static_cast<std::size_t>(code)];
}
Run::Kernel gatheredKernel(Code code) {
    return kernels[2][static_cast<std::size_t>(code)];
}

namespace {

template <bool negated>
double signedAs(double value) {
    return negated ? -value : value;
}

template <bool negated>
void advanceSideBySide(std::size_t count, const double* __restrict x, const double* __restrict k,
                       double h, double* __restrict to) {
    for (std::size_t i = 0; i < count; ++i)
        to[i] = x[i] + h * signedAs<negated>(k[i]);
}

double weighted(double k1, double k2, double k3, double k4) {
    return k4 + k1 + k2 + k2 + k3 + k3;
}

template <bool negated>
void finishSideBySide(std::size_t count, const double* __restrict x, const double* __restrict k1,
                      const double* __restrict k2, const double* __restrict k3,
                      const double* __restrict k4, double sixth, double* __restrict to) {
    for (std::size_t i = 0; i < count; ++i) {
        to[i] = x[i] + sixth * weighted(signedAs<negated>(k1[i]), signedAs<negated>(k2[i]),
                                        signedAs<negated>(k3[i]), signedAs<negated>(k4[i]));
    }
}

} // namespace

Derivatives::Derivatives(std::vector<SignedSlot> slots) : slots_(std::move(slots)) {
    constexpr Index worthALoop = 4;
    for (Index begin = 0; begin < slots_.size();) {
        Index end = begin + 1;
        while (end < slots_.size() && slots_[end].slot == slots_[end - 1].slot + 1 &&
               slots_[end].sign == slots_[begin].sign) {
            ++end;
        }
        Order order = slots_[begin].sign > 0 ? Order::positive : Order::any;
        if (end - begin >= worthALoop) order = Order::sideBySide;
        if (order != Order::sideBySide && !stretches_.empty() && stretches_.back().order == order) {
            stretches_.back().end = end;
        } else {
            stretches_.push_back({begin, end, order});
        }
        begin = end;
    }
}

void Derivatives::advance(const double* x, const double* from, double h, double* to) const {
    const SignedSlot* k = slots_.data();
    for (const auto& [begin, end, order] : stretches_) {
        if (order == Order::sideBySide) {
            const double* first = from + k[begin].slot;
            if (k[begin].sign < 0) {
                advanceSideBySide<true>(end - begin, x + begin, first, h, to + begin);
            } else {
                advanceSideBySide<false>(end - begin, x + begin, first, h, to + begin);
            }
        } else if (order == Order::positive) {
            for (std::size_t i = begin; i < end; ++i)
                to[i] = x[i] + h * from[k[i].slot];
        } else {
            for (std::size_t i = begin; i < end; ++i)
                to[i] = x[i] + h * k[i].read(from);
        }
    }
}

void Derivatives::finish(const double* x, const std::array<const double*, 4>& stages, double sixth,
                         double* to) const {
    const auto [s1, s2, s3, s4] = stages;
    const SignedSlot* k = slots_.data();
    for (const auto& [begin, end, order] : stretches_) {
        if (order == Order::sideBySide) {
            const auto [slot, sign] = k[begin];
            const auto loop = sign < 0 ? finishSideBySide<true> : finishSideBySide<false>;
            loop(end - begin, x + begin, s1 + slot, s2 + slot, s3 + slot, s4 + slot, sixth,
                 to + begin);
        } else if (order == Order::positive) {
            for (std::size_t i = begin; i < end; ++i) {
                const Index slot = k[i].slot;
                to[i] = x[i] + sixth * weighted(s1[slot], s2[slot], s3[slot], s4[slot]);
            }
        } else {
            for (std::size_t i = begin; i < end; ++i) {
                to[i] = x[i] + sixth * weighted(k[i].read(s1), k[i].read(s2), k[i].read(s3),
                                                k[i].read(s4));
            }
        }
    }
}

} // namespace kelvo::kernel_detail
