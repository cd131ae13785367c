// Counts every allocation of this test binary, to show that a step makes none.

#include "kernel/Integrator.h"
#include "support/FamilyGraphs.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>

namespace {
std::size_t allocations = 0;
} // namespace

// Not inlined: a compiler that sees malloc and free through them takes them for mismatched pairs.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++allocations;
    return std::malloc(size == 0 ? 1 : size);
}
[[gnu::noinline]] void* operator new(std::size_t size) {
    if (void* memory = operator new(size, std::nothrow)) return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace kelvo {
namespace {

TEST(Step, AllocatesNothing) {
    for (const std::size_t count : {1, 9, 200}) {
        const auto graph = support::familiesComposed(count).validated();
        double drive = 1.0;
        Integrator run(StateSpace::create(*graph).value(),
                       [&](double t, std::span<double> values) { values[0] = drive + t; });
        const std::size_t before = allocations;
        for (int i = 0; i < 10; ++i)
            run.step(0.01);
        drive = 0.5;
        run.state()[0] = 1.0;
        run.step(0.01);
        EXPECT_GT(run.dissipation(), 0.0);
        EXPECT_EQ(allocations, before) << count << " families";
    }
}

TEST(AllocationCount, CountsAnAllocation) {
    const std::size_t before = allocations;
    const auto one = std::make_unique<int>(1);
    EXPECT_EQ(allocations, before + 1) << *one;
}

} // namespace
} // namespace kelvo
