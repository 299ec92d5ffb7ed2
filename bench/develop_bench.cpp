// Whole photographs at 1600 x 960 from JPEG bytes to JPEG bytes, by the functions of kivo-develop,
// as a ratio to decoding and encoding the same picture alone. The two are timed in turn, so that a
// busy machine slows both. A photograph that differs from the one made step by step is reported and
// not timed.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "app/model/photo_description.h"
#include "backends/scene/scene_harbour.h"
#include "cmake/product.h"
#include "develop/developer.h"
#include "effects/composition.h"
#include "osp/media/picture/exif.h"
#include "osp/media/picture/jpeg_codec.h"

namespace {

using namespace Kivo;
using Osp::Graphics::Dimension;
using Osp::Media::EncodedPicture;
using Osp::Media::PixelLayout;
using Tools::Recipe;

constexpr Dimension kSize{1600, 960};
constexpr int kRounds = 41;

/// The built-in scene as a camera delivers it.
EncodedPicture MakePhotograph() {
    using namespace Osp::Media;
    const Scene::View view = Scene::MakeView(kSize, Scene::kHarbourWorld, 0);
    Osp::Graphics::Surface surface(kSize, Osp::Graphics::Surface::Kind::kOpaque);
    Scene::DrawHarbour(surface, view);
    Scene::DrawHarbourMotion(surface, view, 0);
    EncodedPicture encoded;
    if (Osp::Failed(
            EncodeJpeg(PackedView(surface.Data(), kSize, PixelLayout::kBgrx), {}, encoded))) {
        std::abort();
    }
    return encoded;
}

struct Session {
    EncodedPicture photograph = MakePhotograph();
    std::vector<Tools::Source> sources{{"scene", photograph.Bytes()}};
    Effects::EffectTables tables;
    Tools::Developer alone{tables, false};
    Tools::Developer inBackground{tables, true};
    EncodedPicture developed;
    Osp::Base::Block pixels;
};

Session& TheSession() {
    static Session session;
    return session;
}

void Check(bool isGood, const char* what) {
    if (isGood) return;
    std::fprintf(stderr, "%s failed\n", what);
    std::exit(EXIT_FAILURE);
}

void DecodeAndEncode() {
    Session& session = TheSession();
    Dimension size;
    Check(Osp::Succeeded(Osp::Media::DecodeJpeg(session.photograph.Bytes(), PixelLayout::kRgb,
                                                session.pixels, size)),
          "decoding");
    Check(Osp::Succeeded(Osp::Media::EncodeJpeg(
              PackedView(session.pixels.data(), size, PixelLayout::kRgb), {}, session.developed)),
          "encoding");
}

/// One file for each recipe, from one decoded frame.
struct Subject {
    std::string name;
    std::vector<Recipe> recipes;
    bool isInBackground = false;
};

void Develop(const Subject& subject) {
    Session& session = TheSession();
    Tools::Developer& developer = subject.isInBackground ? session.inBackground : session.alone;
    Check(developer.Load(session.sources).empty(), "loading");
    for (const Recipe& recipe : subject.recipes) {
        const Tools::Metadata metadata =
            developer.MakeMetadata(recipe, Tools::PictureFormat::kJpeg);
        Check(developer.Develop(recipe, Tools::PictureFormat::kJpeg, metadata, session.developed)
                  .empty(),
              "developing");
    }
}

/// The last file of the subject, made step by step.
EncodedPicture DevelopStepByStep(const Recipe& recipe) {
    Session& session = TheSession();
    Dimension size;
    Check(Osp::Succeeded(Osp::Media::DecodeJpeg(session.photograph.Bytes(), PixelLayout::kRgb,
                                                session.pixels, size)),
          "decoding");
    std::vector<std::uint8_t> bytes(session.pixels.size());
    const Effects::Pixels result{bytes.data(), size.width, size.height};
    Effects::Scratch scratch;
    const Effects::EffectJob job{recipe.type, recipe.effect,   recipe.isFront, 0,
                                 {},          &session.tables, &scratch};
    Effects::ComposePhotograph(job, recipe.hdr, {session.pixels.data(), size.width, size.height},
                               {}, result);
    Osp::Media::ExifInfo info;
    info.description =
        ComposePhotoDescription(recipe.type, recipe.effect, ZoomLevel::k1X, recipe.hdr);
    info.software = Kivo::kProductName;
    info.orientation = 1;
    info.size = size;
    EncodedPicture encoded;
    Check(Osp::Succeeded(Osp::Media::EncodeJpeg(PackedView(bytes.data(), size, PixelLayout::kRgb),
                                                Osp::Media::BuildExifSegment(info), encoded)),
          "encoding");
    return encoded;
}

bool IsExact(const Subject& subject) {
    Develop(subject);
    return std::ranges::equal(DevelopStepByStep(subject.recipes.back()).Bytes(),
                              TheSession().developed.Bytes());
}

double Seconds(const std::function<void()>& run) {
    const auto start = std::chrono::steady_clock::now();
    run();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void Time(benchmark::State& state, const Subject& subject) {
    std::vector<double> own;
    std::vector<double> alone;
    for ([[maybe_unused]] auto round : state) {
        alone.push_back(Seconds(DecodeAndEncode));
        own.push_back(Seconds([&] { Develop(subject); }));
        state.SetIterationTime(own.back());
    }
    state.counters["median_ms"] = Median(own) * 1e3;
    state.counters["codec_ms"] = Median(alone) * 1e3;
    state.counters["ratio"] = Median(own) / Median(alone);
}

std::vector<Subject> Subjects() {
    const Recipe tilt{.type = CameraType::kTiltShift};
    const Recipe dslr{.type = CameraType::kDslr};
    const Recipe sepia{.type = CameraType::kKivo, .effect = PhotoEffect::kSepia};
    const Recipe plain{.type = CameraType::kKivo};
    const Recipe hdr{.type = CameraType::kKivo, .hdr = true};
    return {{"TILT", {tilt}},
            {"DSLR", {dslr}},
            {"KIVO/Sepia", {sepia}},
            {"KIVO/HDR_pair", {plain, hdr}},
            {"TILT/two_threads", {tilt}, true},
            {"KIVO/HDR_pair/two_threads", {plain, hdr}, true}};
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return EXIT_FAILURE;
    bool isExact = true;
    for (const Subject& subject : Subjects()) {
        if (!IsExact(subject)) {
            std::fprintf(stderr, "%s: not the photograph made step by step\n",
                         subject.name.c_str());
            isExact = false;
            continue;
        }
        benchmark::RegisterBenchmark(subject.name.c_str(),
                                     [subject](benchmark::State& state) { Time(state, subject); })
            ->Unit(benchmark::kMillisecond)
            ->UseManualTime()
            ->Iterations(kRounds);
    }
    benchmark::RunSpecifiedBenchmarks();
    return isExact ? EXIT_SUCCESS : EXIT_FAILURE;
}
