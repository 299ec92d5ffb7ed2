#include <array>

#include "backends/scene/scene_portrait.h"

namespace Osp::Media::Scene {

namespace {

constexpr Color kInk = 0x2A1812;

void DrawEye(cairo_t* cr, Place middle, double openness, double gaze) {
    const double lid = 27 * openness;
    const auto addOpening = [&] {
        AddOutline(cr, {middle.x - 42, middle.y + 4},
                   {{{middle.x - 20, middle.y - lid},
                     {middle.x + 20, middle.y - lid},
                     {middle.x + 42, middle.y + 2}},
                    {{middle.x + 18, middle.y + 20},
                     {middle.x - 20, middle.y + 20},
                     {middle.x - 42, middle.y + 4}}});
    };
    cairo_save(cr);
    addOpening();
    cairo_clip(cr);
    addOpening();
    Fill(cr, 0xFDF9F4);
    const Place iris{middle.x + gaze, middle.y + 1};
    AddEllipse(cr, iris, 19, 19);
    Fill(cr, 0x2C6E63);
    for (int ray = 0; ray < 24; ++ray) {
        const double turns = ray / 24.0;
        cairo_move_to(cr, iris.x + 7 * Sine(turns), iris.y + 7 * Sine(turns + 0.25));
        cairo_line_to(cr, iris.x + 17 * Sine(turns), iris.y + 17 * Sine(turns + 0.25));
    }
    Stroke(cr, 0x8FD0A8, 1.2, 0.8);
    AddEllipse(cr, iris, 19, 19);
    Stroke(cr, 0x14352F, 2.5);
    AddEllipse(cr, iris, 8.5, 8.5);
    Fill(cr, 0x0B0F10);
    AddEllipse(cr, {iris.x - 6, iris.y - 8}, 5, 5);
    Fill(cr, 0xFFFFFF);
    cairo_restore(cr);
    cairo_move_to(cr, middle.x - 45, middle.y + 5);
    cairo_curve_to(cr, middle.x - 20, middle.y - lid - 1, middle.x + 20, middle.y - lid - 1,
                   middle.x + 45, middle.y + 1);
    Stroke(cr, kInk, 5);
    cairo_move_to(cr, middle.x - 38, middle.y - 16 - 0.4 * lid);
    cairo_curve_to(cr, middle.x - 16, middle.y - 38, middle.x + 16, middle.y - 38, middle.x + 40,
                   middle.y - 16 - 0.4 * lid);
    Stroke(cr, 0xA5623F, 2.6, 0.7);
}

// Open, but for a blink every few seconds.
double Openness(long long number) {
    constexpr int kCycle = 118;
    constexpr int kBlink = 6;
    const int moment = static_cast<int>(number % kCycle);
    if (moment < kCycle - kBlink) return 1;
    const double blink = Sine((moment - (kCycle - kBlink)) / (2.0 * kBlink));
    return 1 - 1.35 * blink;
}

void DrawBunting(cairo_t* cr, long long number) {
    constexpr std::array<Color, 5> kFlags = {0xE63946, 0xFFB703, 0x219EBC, 0x8AC926, 0xFF7AB6};
    const double sag = 62 + 5 * Sine(Phase(number, 170));
    const auto heightAt = [sag](double x) {
        const double t = (x + 40) / 1040;
        return 236 + 4 * sag * t * (1 - t);
    };
    cairo_move_to(cr, -40, heightAt(-40));
    for (int x = 0; x <= 1000; x += 40) cairo_line_to(cr, x, heightAt(x));
    Stroke(cr, 0xFFFFFF, 3.5);
    for (int i = 0; i < 12; ++i) {
        const double x = -16 + 84.0 * i;
        const double swing = 11 * Sine(Phase(number, 74) + i * 0.21);
        AddPolygon(cr, {{x, heightAt(x)},
                        {x + 62, heightAt(x + 62)},
                        {x + 31 + swing, heightAt(x + 31) + 84}});
        Fill(cr, kFlags[static_cast<std::size_t>(i) % kFlags.size()]);
        AddEllipse(cr, {x + 31 + swing * 0.35, heightAt(x + 31) + 28}, 9, 9);
        Fill(cr, 0xFFFFFF, 0.85);
    }
}

void DrawButterfly(cairo_t* cr, long long number) {
    const Place middle{796 + 70 * Sine(Phase(number, 240)),
                       560 + 150 * Sine(Phase(number, 390) + 0.3)};
    const double spread = 0.35 + 0.65 * Sine(Phase(number, 15) / 2);
    for (const double side : {-1.0, 1.0}) {
        AddEllipse(cr, {middle.x + side * 26 * spread, middle.y - 14}, 26 * spread, 24);
        Fill(cr, 0xFF8C1A);
        AddEllipse(cr, {middle.x + side * 20 * spread, middle.y + 16}, 19 * spread, 17);
        Fill(cr, 0xFFC24B);
        AddEllipse(cr, {middle.x + side * 32 * spread, middle.y - 18}, 8 * spread, 8);
        Fill(cr, 0x2B1A10);
    }
    AddEllipse(cr, middle, 4, 24);
    Fill(cr, 0x2B1A10);
}

void DrawPetals(cairo_t* cr, long long number) {
    for (int i = 0; i < 14; ++i) {
        const double fall = Phase(number, 420 + 30 * i) + Scatter(i, 151);
        const double y = 120 + 1500 * (fall - static_cast<int>(fall));
        const double sway = 34 * Sine(Phase(number, 130) + i * 0.17);
        // Along the sides, not over the face.
        const double x = (i % 2 ? 790 : 30) + 140 * Scatter(i, 152) + sway;
        AddEllipse(cr, {x, y}, 13, 7 + 4 * Sine(Phase(number, 60) + i * 0.3));
    }
    Fill(cr, 0xFFC9DE, 0.92);
}

}  // namespace

void DrawPortraitMotion(Graphics::Surface& surface, const View& view, long long number) {
    const Graphics::CairoPointer context = MakeContext(surface, view, CameraSelection::kSecondary);
    cairo_t* const cr = context.get();
    DrawBunting(cr, number);
    const double gaze = 5 * Sine(Phase(number, 310));
    for (const Place& eye : kPortraitEyes) DrawEye(cr, eye, Openness(number), gaze);
    DrawButterfly(cr, number);
    DrawPetals(cr, number);
}

}  // namespace Osp::Media::Scene
