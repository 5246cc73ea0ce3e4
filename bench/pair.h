// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <vector>

/// Measuring two ways of doing the same thing beside each other. The machine's speed drifts by half from
/// minute to minute; the ratio of two runs in a row does not.
namespace Pair {

/// The processor time of this thread in nanoseconds.
inline double threadTime()
{
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e9 + double(time.tv_nsec);
}

template <typename Work> double timeOf(Work &&work)
{
    const double start = threadTime();
    work();
    return threadTime() - start;
}

inline double median(std::vector<double> values)
{
    std::ranges::nth_element(values, values.begin() + values.size() / 2);
    return values[values.size() / 2];
}

/// Runs both in turn. The counters are the median nanoseconds of one unit of each, and the median of the
/// rounds' ratios beside the ratio that we hold ourselves to.
template <typename Ours, typename Other>
void compare(benchmark::State &state, double target, double unitsPerRun, Ours &&ours, Other &&other)
{
    std::vector<double> ourTimes;
    std::vector<double> otherTimes;
    std::vector<double> ratios;
    for (auto _ : state) {
        otherTimes.push_back(timeOf(other) / unitsPerRun);
        ourTimes.push_back(timeOf(ours) / unitsPerRun);
        ratios.push_back(ourTimes.back() / otherTimes.back());
    }
    state.counters["ours_ns"] = median(ourTimes);
    state.counters["other_ns"] = median(otherTimes);
    state.counters["ratio"] = median(ratios);
    state.counters["target"] = target;
}

} // namespace Pair
