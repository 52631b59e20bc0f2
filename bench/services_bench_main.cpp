// The start of the benchmarks that hold services of a session against a desktop of the rig.

#include "bench/rig_run.hpp"
#include "tests/session/own_home.hpp"

#include <QCoreApplication>
#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    const orvel::test::OwnHome home;
    const QCoreApplication application(argc, argv);
    return orvel::runInRig([&] {
        benchmark::Initialize(&argc, argv);
        benchmark::RunSpecifiedBenchmarks();
    });
}
