#include "Handwritten.h"

#include "support/FamilyGraphs.h"

#include <utility>

namespace kelvo::handwritten {

// Not in an unnamed namespace: what is written here must be written.
std::array<double, 46> wholeEffort;
std::array<double, 46> wholeFlow;
std::array<double, 2> wholePower;

namespace {

[[gnu::always_inline]] inline double evaluateInline(Startup, const double* x, double drive,
                                                    double* dx) {
    const double flow = x[0] / 0.5;
    const double effortR = 2.0 * flow;
    const double effortC = x[1] / 1.0;
    dx[0] = drive - effortR - effortC;
    dx[1] = flow;
    return flow * 2.0 * flow;
}

template <std::size_t i>
[[gnu::always_inline]] inline double family(const double* x, double effort, double* dx) {
    constexpr double controls = support::families[i].controls;
    constexpr double gap = support::families[i].gap;
    const double driven = effort / controls;
    const double flow = x[2 * i] / 1.0;
    const double effortR = gap * flow;
    const double effortC = x[2 * i + 1] / controls;
    dx[2 * i] = driven - effortR - effortC;
    dx[2 * i + 1] = flow;
    return flow * gap * flow;
}

template <std::size_t... i>
[[gnu::always_inline]] inline double allFamilies(const double* x, double effort, double* dx,
                                                 std::index_sequence<i...>) {
    return (0.0 + ... + family<i>(x, effort, dx));
}

[[gnu::always_inline]] inline double evaluateInline(NineFamilies, const double* x, double drive,
                                                    double* dx) {
    return allFamilies(x, drive, dx, std::make_index_sequence<9>());
}

template <class Run, class Evaluate>
[[gnu::always_inline]] inline void rungeKutta(Run& run, double h, Evaluate evaluate) {
    using State = decltype(run.state);
    State k1, k2, k3, k4, y, unused;
    const State x = run.state;
    const double half = h * 0.5;
    const double d0 = evaluate(x.data(), *run.drive, unused.data());
    evaluate(x.data(), *run.drive, k1.data());
    for (std::size_t i = 0; i < x.size(); ++i)
        y[i] = x[i] + half * k1[i];
    evaluate(y.data(), *run.drive, k2.data());
    for (std::size_t i = 0; i < x.size(); ++i)
        y[i] = x[i] + half * k2[i];
    evaluate(y.data(), *run.drive, k3.data());
    for (std::size_t i = 0; i < x.size(); ++i)
        y[i] = x[i] + h * k3[i];
    evaluate(y.data(), *run.drive, k4.data());
    for (std::size_t i = 0; i < x.size(); ++i) {
        run.state[i] = x[i] + (h / 6) * (k4[i] + k1[i] + k2[i] + k2[i] + k3[i] + k3[i]);
    }
    const double d1 = evaluate(run.state.data(), *run.drive, unused.data());
    run.risk += h * (d0 + d1) * 0.5;
    run.t += h;
}

} // namespace

[[gnu::noinline]] double Startup::evaluate(const double* x, double drive, double* dx) {
    return evaluateInline(Startup{}, x, drive, dx);
}

[[gnu::noinline]] double NineFamilies::evaluate(const double* x, double drive, double* dx) {
    return evaluateInline(NineFamilies{}, x, drive, dx);
}

[[gnu::noinline]] double StartupWhole::evaluate(const double* x, double drive, double* dx) {
    double* e = wholeEffort.data();
    double* f = wholeFlow.data();
    f[2] = x[0] / 0.5;
    f[0] = f[1] = f[3] = f[2];
    e[0] = drive;
    e[1] = 2.0 * f[1];
    e[3] = x[1] / 1.0;
    e[2] = e[0] - e[1] - e[3];
    dx[0] = e[2];
    dx[1] = f[3];
    wholePower[0] = f[0] * e[0];
    wholePower[1] = e[2] * f[2] + e[3] * f[3];
    return f[1] * 2.0 * f[1];
}

template <std::size_t i>
[[gnu::always_inline]] inline void wholeFamily(const double* x, double* dx, double* e, double* f) {
    constexpr double controls = support::families[i].controls;
    constexpr double gap = support::families[i].gap;
    constexpr std::size_t k = 1 + 5 * i;
    e[k] = e[0];
    e[k + 1] = e[k] / controls;
    f[k + 3] = x[2 * i] / 1.0;
    f[k + 1] = f[k + 2] = f[k + 4] = f[k + 3];
    f[k] = f[k + 1] / controls;
    e[k + 2] = gap * f[k + 2];
    e[k + 4] = x[2 * i + 1] / controls;
    e[k + 3] = e[k + 1] - e[k + 2] - e[k + 4];
    dx[2 * i] = e[k + 3];
    dx[2 * i + 1] = f[k + 4];
}

template <std::size_t... i>
[[gnu::always_inline]] inline double wholeFamilies(const double* x, double drive, double* dx,
                                                   std::index_sequence<i...>) {
    double* e = wholeEffort.data();
    double* f = wholeFlow.data();
    e[0] = drive;
    (wholeFamily<i>(x, dx, e, f), ...);
    f[0] = (0.0 + ... + f[1 + 5 * i]);
    wholePower[0] = f[0] * e[0];
    wholePower[1] = (0.0 + ... + (e[4 + 5 * i] * f[4 + 5 * i] + e[5 + 5 * i] * f[5 + 5 * i]));
    return (0.0 + ... + (f[3 + 5 * i] * support::families[i].gap * f[3 + 5 * i]));
}

[[gnu::noinline]] double NineFamiliesWhole::evaluate(const double* x, double drive, double* dx) {
    return wholeFamilies(x, drive, dx, std::make_index_sequence<9>());
}

template <class Graph>
void Integrator<Graph>::step(double h) {
    rungeKutta(*this, h, [](const double* x, double source, double* dx) {
        // The barrier keeps a compiler that sees the body from merging equal evaluations.
        asm volatile("" ::: "memory");
        return Graph::evaluate(x, source, dx);
    });
}

template <class Graph>
void InlinedIntegrator<Graph>::step(double h) {
    rungeKutta(*this, h, [](const double* x, double source, double* dx) {
        return evaluateInline(Graph{}, x, source, dx);
    });
}

template struct Integrator<Startup>;
template struct Integrator<NineFamilies>;
template struct Integrator<StartupWhole>;
template struct Integrator<NineFamiliesWhole>;
template struct InlinedIntegrator<Startup>;
template struct InlinedIntegrator<NineFamilies>;

} // namespace kelvo::handwritten
