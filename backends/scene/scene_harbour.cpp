#include "backends/scene/scene_harbour.h"

#include <array>
#include <utility>

#include "backends/scene/scene_harbour_props.h"

namespace Osp::Media::Scene {

namespace {

constexpr double kHorizon = kHarbourHorizon;
constexpr double kShore = 642;

constexpr Rgb kZenith{34, 104, 192};
constexpr Rgb kHaze{214, 233, 240};
constexpr Rgb kCloudLight{255, 253, 248};
constexpr Rgb kCloudShade{176, 196, 214};
constexpr Rgb kFarSea{58, 128, 170};
constexpr Rgb kDeepSea{16, 94, 142};
constexpr Rgb kShallows{92, 198, 186};
constexpr Rgb kFoam{248, 252, 250};
constexpr Rgb kWetSand{176, 146, 104};
constexpr Rgb kDrySand{238, 214, 166};
constexpr Rgb kNearSand{222, 188, 132};

/// Several noises, each finer and fainter than the one before.
template <std::size_t kCount>
class Layers {
  public:
    struct Layer {
        Noise noise;
        float weight;
    };
    explicit Layers(std::array<Layer, kCount> layers) : layers_(std::move(layers)) {}

    void MoveTo(float y) {
        for (Layer& layer : layers_) layer.noise.MoveTo(y);
    }
    float At(float x) const {
        float sum = 0;
        for (const Layer& layer : layers_) sum += layer.noise.At(x) * layer.weight;
        return sum;
    }

  private:
    std::array<Layer, kCount> layers_;
};

void DrawSky(Graphics::Surface& surface, const View& view) {
    Layers<4> clouds({{{{view, 190, 80, 11}, 0.5F},
                       {{view, 90, 38, 12}, 0.27F},
                       {{view, 44, 19, 13}, 0.15F},
                       {{view, 21, 9, 14}, 0.08F}}});
    PaintRows(surface, view, -1000, kHorizon, [&](float y, const Behind&) {
        clouds.MoveTo(y);
        const float height = 1 - std::max(0.0F, y) / static_cast<float>(kHorizon);
        const Rgb clear = Mix(kHaze, kZenith, Smooth(-0.1F, 1.05F, height));
        const float presence = Smooth(0.02F, 0.3F, height) * (1 - Smooth(0.86F, 1.2F, height));
        const float threshold = 0.62F - 0.12F * presence;
        return [&clouds, clear, presence, threshold](float x) {
            const float density = clouds.At(x);
            const float cover = Smooth(threshold, threshold + 0.16F, density) * presence;
            if (cover <= 0) return clear;
            const float thickness = Smooth(threshold + 0.05F, threshold + 0.3F, density);
            return Mix(clear, Mix(kCloudLight, kCloudShade, thickness * 0.8F), cover * 0.95F);
        };
    });
}

// The land behind the harbour: a hazy range, and wooded hills before it.
void DrawHills(Graphics::Surface& surface, const View& view) {
    Layers<2> far({{{{view, 260, 100, 21}, 62}, {{view, 61, 100, 22}, 16}}});
    Noise near(view, 150, 100, 23);
    Noise trees(view, 17, 100, 24);
    Layers<2> leaves({{{{view, 5, 4, 25}, 0.6F}, {{view, 2, 1.7F, 26}, 0.4F}}});
    // The outlines are the same noise at one height.
    far.MoveTo(50);
    near.MoveTo(50);
    trees.MoveTo(50);
    const auto edge = static_cast<float>(0.7 / view.scale);
    PaintRows(surface, view, 240, kHorizon, [&](float y, const Behind& sky) {
        leaves.MoveTo(y);
        return [&, y, sky](float x) {
            const float range = 352 - far.At(x);
            const float slope = Smooth(760, 120, x);
            const float wood = 398 - slope * (88 + 34 * near.At(x)) - 7 * trees.At(x) * slope;
            if (y < std::min(range, wood) - edge) return sky.At(x);
            const Rgb haze = Lighten({134, 168, 190}, (y - range) * 0.35F);
            const Rgb leaf = Mix(Rgb{44, 92, 60}, Rgb{128, 158, 84}, leaves.At(x));
            return Mix(Mix(sky.At(x), haze, Smooth(range - edge, range + edge, y)), leaf,
                       Smooth(wood - edge, wood + edge, y));
        };
    });
}

// Waves get smaller and closer together towards the horizon, as the eye sees a plane.
void DrawSea(Graphics::Surface& surface, const View& view) {
    constexpr float kEyeX = 800;
    constexpr float kFarthest = 10;  // times as dense at the horizon as at the shore
    const View plane{view.size, view.scale / kFarthest, kEyeX + (view.left - kEyeX) * kFarthest, 0};
    Noise swell(plane, 300, 2.8F, 31);
    Noise ripple(plane, 74, 1, 32);
    constexpr auto kDepth = static_cast<float>(kShore - kHorizon);
    PaintRows(surface, view, kHorizon, kShore + 60, [&](float y, const Behind&) {
        const float below = y - static_cast<float>(kHorizon);
        const float row = below * 145 / (below + 116);
        swell.MoveTo(row);
        ripple.MoveTo(row);
        const float near = below / kDepth;
        const Rgb water = near < 0.45F ? Mix(kFarSea, kDeepSea, Smooth(0, 0.45F, near))
                                       : Mix(kDeepSea, kShallows, Smooth(0.45F, 1.02F, near));
        const float density = kFarthest * 27 / (below + 27);
        return [&, water, density, contrast = 16 + 40 * near](float x) {
            const float across = kEyeX + (x - kEyeX) * std::min(density, kFarthest);
            const float light = (swell.At(across) - 0.5F) * 0.7F + ripple.At(across) - 0.5F;
            const float crest = Smooth(0.42F, 0.6F, light);
            return Mix(Lighten(water, light * contrast), kFoam, crest * 0.5F);
        };
    });
}

void DrawBeach(Graphics::Surface& surface, const View& view) {
    Layers<3> relief(
        {{{{view, 120, 26, 41}, 26}, {{view, 26, 5, 42}, 15}, {{view, 1.3F, 1.1F, 43}, 20}}});
    constexpr float kMeanRelief = (26 + 15 + 20) / 2.0F;
    Layers<2> lace({{{{view, 7, 3.5F, 44}, 0.6F}, {{view, 3, 2, 45}, 0.4F}}});
    PaintRows(surface, view, kShore - 40, 2000, [&](float y, const Behind& sea) {
        relief.MoveTo(y);
        lace.MoveTo(y);
        const Rgb dry = Mix(kDrySand, kNearSand, Smooth(static_cast<float>(kShore), 960, y));
        return [&, y, sea, dry](float x) {
            const float below = y - static_cast<float>(HarbourShoreAt(x));
            if (below < -14) return sea.At(x);
            const Rgb relieved = Lighten(dry, relief.At(x) - kMeanRelief);
            if (below > 46) return relieved;
            const Rgb sand = Mix(relieved, kWetSand, Smooth(46, 8, below) * 0.75F);
            const Rgb ground = Mix(sea.At(x), sand, Smooth(-2, 14, below));
            const float foam = Smooth(-14, -2, below) * Smooth(12, 2, below);
            return Mix(ground, kFoam, foam * Smooth(0.25F, 0.6F, lace.At(x)));
        };
    });
}

}  // namespace

double HarbourShoreAt(double x) {
    return kShore + 18 * Sine(x / 1500 + 0.1) + 7 * Sine(x / 430);
}

void DrawHarbour(Graphics::Surface& surface, const View& view) {
    DrawSky(surface, view);
    DrawHills(surface, view);
    DrawSea(surface, view);
    DrawBeach(surface, view);
    const Graphics::CairoPointer context = MakeContext(surface, view, CameraSelection::kPrimary);
    DrawVillage(context.get());
    DrawLighthouse(context.get());
    DrawParasol(context.get());
    DrawSignBoard(context.get());
    DrawPeople(context.get());
    DrawDuneGrass(context.get());
}

void DrawHarbourMotion(Graphics::Surface& surface, const View& view, long long number) {
    const Graphics::CairoPointer context = MakeContext(surface, view, CameraSelection::kPrimary);
    DrawGlitter(context.get(), number);
    DrawBoats(context.get(), number);
    DrawGulls(context.get(), number);
    DrawKites(context.get(), number);
    DrawBall(context.get(), number);
    DrawSwayingGrass(context.get(), number);
}

}  // namespace Osp::Media::Scene
