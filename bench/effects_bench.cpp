// Speed of every kernel at 1600 x 960 on one thread, as nanoseconds a pixel and as a factor against
// the plain kernel. A kernel whose picture is not the plain one is reported and not timed.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "effects/composition.h"
#include "effects/conversions/bmp_rows.h"
#include "effects/conversions/preview_conversion.h"
#include "effects/conversions/rgba.h"
#include "effects/effect_tables.h"
#include "effects/kernels/bw.h"
#include "effects/kernels/colorize.h"
#include "effects/kernels/edge.h"
#include "effects/kernels/mirror.h"
#include "effects/kernels/negative.h"
#include "effects/kernels/sepia.h"
#include "effects/types/hdr.h"
#include "effects/types/mix.h"
#include "effects/types/out_focus.h"
#include "effects/types/tilt_shift.h"
#include "tests/effects/plain/plain_blur.h"
#include "tests/effects/plain/plain_colour.h"
#include "tests/effects/plain/plain_conversions.h"

namespace {

using namespace Kivo::Effects;

constexpr int kWidth = 1600;
constexpr int kHeight = 960;
constexpr double kPixels = double{kWidth} * kHeight;
constexpr int kPlainRuns = 5;
constexpr int kRepetitions = 5;

using Bytes = std::vector<std::uint8_t>;

/// Half noise, half gradient: neither friendly nor hostile to any kernel.
Bytes MakePicture(unsigned seed) {
    std::mt19937 random(seed);
    Bytes bytes(static_cast<std::size_t>(kPixels) * 3);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const bool noise = i < bytes.size() / 2;
        bytes[i] = static_cast<std::uint8_t>(noise ? random() >> 9 : i / 3 % kWidth * 255 / kWidth);
    }
    return bytes;
}

struct Session {
    Bytes firstBytes = MakePicture(1);
    Bytes sourceBytes = MakePicture(2);
    Bytes resultBytes = Bytes(sourceBytes.size());
    ConstPixels first{firstBytes.data(), kWidth, kHeight};
    ConstPixels source{sourceBytes.data(), kWidth, kHeight};
    Pixels result{resultBytes.data(), kWidth, kHeight};
    Bytes rgba = Bytes(sourceBytes.size() / 3 * 4);
    EffectTables tables;
    Scratch scratch;
    Plain::Levels plainLevels;
};

Session& TheSession() {
    static Session session;
    return session;
}

struct Subject {
    std::string name;
    std::function<void(Session&)> product;
    std::function<void(Session&)> plain;
    bool writesWholePicture = true;
};

/// Processor time, which other programs do not lengthen.
double Now() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

double MedianSeconds(const std::function<void(Session&)>& run, int runs) {
    std::vector<double> seconds;
    for (int i = 0; i < runs; ++i) {
        const double start = Now();
        run(TheSession());
        seconds.push_back(Now() - start);
    }
    std::sort(seconds.begin(), seconds.end());
    return seconds[seconds.size() / 2];
}

bool GivesThePlainPicture(const Subject& subject) {
    Session& session = TheSession();
    std::fill(session.resultBytes.begin(), session.resultBytes.end(), std::uint8_t{1});
    subject.plain(session);
    const Bytes expected = session.resultBytes;
    // Another fill than the plain picture's shows bytes that are not written.
    const std::uint8_t fill = subject.writesWholePicture ? 2 : 1;
    std::fill(session.resultBytes.begin(), session.resultBytes.end(), fill);
    subject.product(session);
    return session.resultBytes == expected;
}

void Time(benchmark::State& state, const Subject& subject, double plainSeconds) {
    const double start = Now();
    std::int64_t rounds = 0;
    for ([[maybe_unused]] auto round : state) {
        subject.product(TheSession());
        benchmark::ClobberMemory();
        ++rounds;
    }
    const double seconds = (Now() - start) / static_cast<double>(rounds);
    state.counters["ns_per_pixel"] = seconds * 1e9 / kPixels;
    state.counters["plain_ns_per_pixel"] = plainSeconds * 1e9 / kPixels;
    state.counters["factor"] = plainSeconds / seconds;
}

template <bool flag>
void RunCircular(Session& s) {
    Circular(s.source, s.result, *s.tables.Circular(kWidth, kHeight, flag));
}

std::vector<Subject> Subjects() {
    return {
        {"BW", [](Session& s) { BW(s.source, s.result); },
         [](Session& s) { Plain::BW(s.source, s.result); }},
        {"Sepia", [](Session& s) { Sepia(s.source, s.result); },
         [](Session& s) { Plain::Sepia(s.source, s.result); }},
        {"Negative", [](Session& s) { Negative(s.source, s.result); },
         [](Session& s) { Plain::Negative(s.source, s.result); }},
        {"Colorize", [](Session& s) { Colorize(s.source, s.result, 121, 62, 0.5F); },
         [](Session& s) { Plain::Colorize(s.source, s.result, 121, 62, 0.5F); }},
        {"Edge", [](Session& s) { Edge(s.source, s.result, s.scratch); },
         [](Session& s) { Plain::Edge(s.source, s.result); }},
        {"Circular/fisheye", RunCircular<false>,
         [](Session& s) { Plain::Circular(s.source, s.result, false); }},
        {"Circular/concave", RunCircular<true>,
         [](Session& s) { Plain::Circular(s.source, s.result, true); }},
        {"Vignet",
         [](Session& s) {
             Vignet(s.source, s.result, *s.tables.Vignet(kWidth, kHeight, true), s.scratch);
         },
         [](Session& s) { Plain::Vignet(s.source, s.result, true); }},
        {"Mix", [](Session& s) { Mix(s.first, s.source, s.result); },
         [](Session& s) { Plain::Mix(s.first, s.source, s.result); }},
        {"Mirror", [](Session& s) { Mirror(s.source, s.result, false); },
         [](Session& s) { Plain::Mirror(s.source, s.result, false); }},
        {"HDR", [](Session& s) { HDR(s.source, s.result, s.tables.Levels(), s.scratch); },
         [](Session& s) { Plain::HDR(s.source, s.result, s.plainLevels); }},
        {"TiltShift",
         [](Session& s) { TiltShift(s.source, s.result, s.tables.Levels(), s.scratch); },
         [](Session& s) { Plain::TiltShift(s.source, s.result, s.plainLevels); }},
        {"OutFocus", [](Session& s) { OutFocus(s.source, s.result, s.tables.Levels(), s.scratch); },
         [](Session& s) { Plain::OutFocus(s.source, s.result, s.plainLevels); }},
        {"ConvertPreview", [](Session& s) { Kivo::ConvertPreview(s.sourceBytes.data(), s.result); },
         [](Session& s) { Plain::ConvertPreview(s.sourceBytes.data(), s.result); }},
        {"EncodePreview",
         [](Session& s) { Kivo::EncodePreview(s.source, s.first, s.resultBytes.data()); },
         [](Session& s) { Plain::EncodePreview(s.source, s.first, s.resultBytes.data()); }, false},
        {"FromBmpRows", [](Session& s) { FromBmpRows(s.sourceBytes.data(), s.result); },
         [](Session& s) { Plain::FromBmpRows(s.sourceBytes.data(), s.result); }},
    };
}

/// How fast the memory is, which bounds Mix and Negative: a copy of the picture.
void TimeCopy(benchmark::State& state) {
    Session& session = TheSession();
    for ([[maybe_unused]] auto round : state) {
        session.resultBytes = session.sourceBytes;
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
}

/// Without a plain counterpart of its own: conversion to 32 bits, alone.
void TimeRgba(benchmark::State& state, bool turned) {
    Session& session = TheSession();
    for ([[maybe_unused]] auto round : state) {
        ConvertToRgba(session.source, turned, session.rgba.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return EXIT_FAILURE;
    bool exact = true;
    for (const Subject& subject : Subjects()) {
        if (!GivesThePlainPicture(subject)) {
            std::fprintf(stderr, "%s: not the plain picture\n", subject.name.c_str());
            exact = false;
            continue;
        }
        const double plainSeconds = MedianSeconds(subject.plain, kPlainRuns);
        benchmark::RegisterBenchmark(subject.name.c_str(),
                                     [subject, plainSeconds](benchmark::State& state) {
                                         Time(state, subject, plainSeconds);
                                     })
            ->Unit(benchmark::kMillisecond)
            ->Repetitions(kRepetitions)
            ->ReportAggregatesOnly();
    }
    benchmark::RegisterBenchmark("Copy", TimeCopy)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("Rgba", TimeRgba, false)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("Rgba/turned", TimeRgba, true)->Unit(benchmark::kMillisecond);
    benchmark::RunSpecifiedBenchmarks();
    return exact ? EXIT_SUCCESS : EXIT_FAILURE;
}
