#include "media/scene_portrait.h"

#include <array>
#include <memory>

namespace Osp::Media::Scene {

namespace {

struct PatternDeleter {
    void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};

constexpr Place kFace{480, 730};
constexpr double kEyeY = 716;
constexpr double kEyeSpacing = 84;
constexpr Color kSkin = 0xF0C09A;
constexpr Color kSkinLight = 0xFBD9B8;
constexpr Color kSkinShade = 0xC98762;
constexpr Color kHair = 0x5B3220;
constexpr Color kInk = 0x2A1812;

/// Fills the path with a glow that is `inner` at the centre and `outer` at the radius.
void FillGlow(cairo_t* cr, Place centre, double radius, Color inner, double innerAlpha, Color outer,
              double outerAlpha) {
    const std::unique_ptr<cairo_pattern_t, PatternDeleter> glow(
        cairo_pattern_create_radial(centre.x, centre.y, 0, centre.x, centre.y, radius));
    const auto stop = [&](double offset, Color color, double alpha) {
        cairo_pattern_add_color_stop_rgba(glow.get(), offset, (color >> 16 & 255) / 255.0,
                                          (color >> 8 & 255) / 255.0, (color & 255) / 255.0, alpha);
    };
    stop(0, inner, innerAlpha);
    stop(1, outer, outerAlpha);
    cairo_set_source(cr, glow.get());
    cairo_fill(cr);
}

void AddGlow(cairo_t* cr, Place centre, double radiusX, double radiusY, Color color, double alpha) {
    cairo_save(cr);
    cairo_translate(cr, centre.x, centre.y);
    cairo_scale(cr, radiusX, radiusY);
    AddEllipse(cr, {0, 0}, 1, 1);
    FillGlow(cr, {0, 0}, 1, color, alpha, color, 0);
    cairo_restore(cr);
}

// Sunlit leaves, out of focus.
void DrawGarden(Graphics::Surface& surface, const View& view) {
    Noise large(view, 170, 150, 111);
    Noise middle(view, 70, 64, 112);
    Noise fine(view, 31, 29, 113);
    PaintRows(surface, view, -1000, 3000, [&](float y, const Behind&) {
        large.MoveTo(y);
        middle.MoveTo(y);
        fine.MoveTo(y);
        const float height = Smooth(1500, 0, y);
        const Rgb shade = Mix(Rgb{24, 62, 46}, Rgb{46, 104, 62}, height);
        const Rgb light = Mix(Rgb{120, 160, 66}, Rgb{206, 222, 128}, height);
        return [&, shade, light](float x) {
            const float leaves = large.At(x) * 0.6F + middle.At(x) * 0.3F + fine.At(x) * 0.1F;
            return Mix(shade, light, Smooth(0.3F, 0.78F, leaves));
        };
    });
}

void DrawBokeh(cairo_t* cr) {
    constexpr std::array<Color, 5> kLights = {0xFFF3B0, 0xF9C74F, 0xF28482, 0xE8F7C8, 0xFFFFFF};
    for (int i = 0; i < 46; ++i) {
        const Place middle{960 * Scatter(i, 121), 1500 * Scatter(i, 122)};
        const double radius = 16 + 38 * Scatter(i, 123);
        AddEllipse(cr, middle, radius, radius);
        Fill(cr, kLights[static_cast<std::size_t>(i) % kLights.size()],
             0.1 + 0.2 * Scatter(i, 124));
    }
}

void DrawHairBehind(cairo_t* cr) {
    cairo_move_to(cr, 480, 428);
    cairo_curve_to(cr, 250, 420, 232, 640, 236, 800);
    cairo_curve_to(cr, 238, 960, 190, 1020, 214, 1160);
    cairo_curve_to(cr, 330, 1200, 630, 1200, 746, 1160);
    cairo_curve_to(cr, 770, 1020, 722, 960, 724, 800);
    cairo_curve_to(cr, 728, 640, 710, 420, 480, 428);
    cairo_close_path(cr);
    Fill(cr, 0x3D2015);
}

void AddJumper(cairo_t* cr) {
    cairo_move_to(cr, 398, 1048);
    cairo_curve_to(cr, 330, 1104, 180, 1110, 112, 1190);
    cairo_curve_to(cr, 40, 1280, 10, 1460, 0, 1640);
    cairo_line_to(cr, 960, 1640);
    cairo_curve_to(cr, 950, 1460, 920, 1280, 848, 1190);
    cairo_curve_to(cr, 780, 1110, 630, 1104, 562, 1048);
    cairo_curve_to(cr, 540, 1120, 420, 1120, 398, 1048);
    cairo_close_path(cr);
}

void DrawJumper(cairo_t* cr) {
    cairo_save(cr);
    AddJumper(cr);
    cairo_clip(cr);
    cairo_rectangle(cr, 0, 1000, 960, 640);
    Fill(cr, 0xF4EFE4);
    for (double y = 1130; y < 1640; y += 76) {
        cairo_move_to(cr, -20, y + 60);
        cairo_curve_to(cr, 240, y - 16, 720, y - 16, 980, y + 60);
        Stroke(cr, 0x1D4E89, 34);
    }
    for (int i = 0; i < 150; ++i) {  // the knit
        const double x = -10 + 6.6 * i;
        cairo_move_to(cr, x, 1040);
        cairo_line_to(cr, x + (x - 480) * 0.06, 1640);
    }
    Stroke(cr, 0x1A2A40, 1.3, 0.16);
    cairo_rectangle(cr, 0, 1000, 960, 640);
    FillGlow(cr, {430, 1240}, 560, 0xFFFFFF, 0.12, 0x10203A, 0.38);
    cairo_restore(cr);
    AddEllipse(cr, {668, 1282}, 62, 62);
    Fill(cr, 0xE63946);
    AddEllipse(cr, {668, 1282}, 54, 54);
    Stroke(cr, 0xFFFFFF, 4);
    AddText(cr, {627, 1270}, 24, "KIVO");
    Stroke(cr, 0xFFFFFF, 4.6);
}

void DrawNeck(cairo_t* cr) {
    cairo_move_to(cr, 396, 900);
    cairo_curve_to(cr, 404, 1000, 396, 1040, 384, 1062);
    cairo_curve_to(cr, 430, 1128, 530, 1128, 576, 1062);
    cairo_curve_to(cr, 564, 1040, 556, 1000, 564, 900);
    cairo_close_path(cr);
    Fill(cr, 0xE0A67E);
    AddGlow(cr, {480, 950}, 150, 92, 0x8A4B30, 0.62);
}

void AddFace(cairo_t* cr) {
    cairo_move_to(cr, 480, 490);
    cairo_curve_to(cr, 340, 490, 296, 590, 300, 716);
    cairo_curve_to(cr, 304, 830, 352, 930, 420, 974);
    cairo_curve_to(cr, 458, 998, 502, 998, 540, 974);
    cairo_curve_to(cr, 608, 930, 656, 830, 660, 716);
    cairo_curve_to(cr, 664, 590, 620, 490, 480, 490);
    cairo_close_path(cr);
}

void DrawEar(cairo_t* cr, double side) {
    AddEllipse(cr, {480 + side * 184, 748}, 26, 50);
    Fill(cr, 0xDDA27A);
    AddGlow(cr, {480 + side * 186, 752}, 18, 36, 0xA85F42, 0.6);
    AddEllipse(cr, {480 + side * 190, 806}, 7, 7);
    Fill(cr, 0xF6C945);
}

void DrawSkin(cairo_t* cr) {
    AddFace(cr);
    Fill(cr, kSkin);
    cairo_save(cr);
    AddFace(cr);
    cairo_clip(cr);
    AddGlow(cr, {430, 610}, 190, 150, kSkinLight, 0.95);
    AddGlow(cr, {690, 800}, 170, 330, 0xA3603F, 0.55);
    AddGlow(cr, {480, 1020}, 210, 90, 0xA3603F, 0.5);
    AddGlow(cr, {480, 500}, 230, 90, 0x7A3F28, 0.5);
    AddGlow(cr, {372, 806}, 66, 48, 0xE8766A, 0.5);
    AddGlow(cr, {588, 806}, 66, 48, 0xE8766A, 0.5);
    AddGlow(cr, {480, 946}, 60, 40, kSkinLight, 0.7);
    for (int i = 0; i < 44; ++i) {  // freckles
        const double x = 480 + (Scatter(i, 131) - 0.5) * 250;
        AddEllipse(cr, {x, 776 + 50 * Scatter(i, 132)}, 2.6, 2.1);
    }
    Fill(cr, 0xB8714C, 0.42);
    cairo_restore(cr);
}

void DrawNose(cairo_t* cr) {
    AddGlow(cr, {504, 776}, 26, 74, kSkinShade, 0.55);
    AddGlow(cr, {474, 760}, 15, 84, 0xFFF0DE, 0.75);
    AddGlow(cr, {480, 818}, 44, 26, 0xC27B58, 0.55);
    AddGlow(cr, {474, 808}, 17, 15, 0xFFF2E4, 0.85);
    AddEllipse(cr, {461, 829}, 9, 5);
    AddEllipse(cr, {501, 829}, 9, 5);
    Fill(cr, 0x8C4A33, 0.75);
}

void DrawMouth(cairo_t* cr) {
    cairo_move_to(cr, 404, 872);
    cairo_curve_to(cr, 440, 886, 520, 886, 556, 872);
    cairo_curve_to(cr, 538, 926, 422, 926, 404, 872);
    cairo_close_path(cr);
    Fill(cr, 0x7A2328);
    cairo_move_to(cr, 412, 875);
    cairo_curve_to(cr, 444, 888, 516, 888, 548, 875);
    cairo_curve_to(cr, 530, 904, 430, 904, 412, 875);
    cairo_close_path(cr);
    Fill(cr, 0xFFFDF8);
    cairo_move_to(cr, 402, 870);
    cairo_curve_to(cr, 430, 860, 458, 852, 480, 862);
    cairo_curve_to(cr, 502, 852, 530, 860, 558, 870);
    cairo_curve_to(cr, 520, 884, 440, 884, 402, 870);
    cairo_close_path(cr);
    Fill(cr, 0xC8535A);
    cairo_move_to(cr, 418, 895);
    cairo_curve_to(cr, 446, 916, 514, 916, 542, 895);
    cairo_curve_to(cr, 520, 938, 440, 938, 418, 895);
    cairo_close_path(cr);
    Fill(cr, 0xD8646A);
    AddGlow(cr, {474, 920}, 34, 8, 0xFFD6D2, 0.75);
    AddGlow(cr, {398, 870}, 14, 12, 0x9A5638, 0.6);
    AddGlow(cr, {562, 870}, 14, 12, 0x9A5638, 0.6);
}

void DrawBrow(cairo_t* cr, double side) {
    cairo_move_to(cr, 480 + side * 38, 664);
    cairo_curve_to(cr, 480 + side * 66, 640, 480 + side * 110, 634, 480 + side * 140, 662);
    cairo_curve_to(cr, 480 + side * 110, 650, 480 + side * 66, 656, 480 + side * 40, 678);
    cairo_close_path(cr);
    Fill(cr, 0x4A2818, 0.92);
}

// A strand follows the outline of the hair from the parting down to a curl.
void AddStrand(cairo_t* cr, int index, double side) {
    const double depth = Scatter(index, 142);
    const double reach = 196 + 58 * depth;
    const double start = 446 + 40 * Scatter(index, 143);
    const double end = 960 + 230 * Scatter(index, 144);
    const double curl = 26 * (Scatter(index, 145) - 0.5);
    const double x = 500 + side * 12 * Scatter(index, 146);
    const double far = 480 + side * reach;
    cairo_move_to(cr, x, start);
    cairo_curve_to(cr, 480 + side * (110 + 90 * depth), start - 12, far - side * 6, 560, far, 720);
    cairo_curve_to(cr, far + side * 4, 830, far - side * (18 + curl), 900, far + side * curl, end);
}

void DrawHairInFront(cairo_t* cr) {
    for (const double side : {-1.0, 1.0}) {
        cairo_move_to(cr, 510, 436);
        cairo_curve_to(cr, 480 + side * 190, 420, 480 + side * 256, 560, 480 + side * 250, 760);
        cairo_curve_to(cr, 480 + side * 250, 900, 480 + side * 300, 1010, 480 + side * 262, 1176);
        cairo_curve_to(cr, 480 + side * 190, 1130, 480 + side * 176, 1000, 480 + side * 196, 860);
        cairo_curve_to(cr, 480 + side * 188, 700, 480 + side * 170, 590, 510, 520);
        cairo_close_path(cr);
        Fill(cr, kHair);
    }
    constexpr std::array<Color, 4> kShades = {0x7C4A2E, 0x3D2015, 0xA0683C, 0x6A3B24};
    for (int i = 0; i < 150; ++i) {
        AddStrand(cr, i, i % 2 ? 1 : -1);
        Stroke(cr, kShades[static_cast<std::size_t>(i / 2) % kShades.size()],
               1.4 + 1.8 * Scatter(i, 141), 0.7);
    }
    AddGlow(cr, {400, 500}, 100, 40, 0xD89A62, 0.35);
}

void DrawEye(cairo_t* cr, Place middle, double openness, double gaze) {
    const double lid = 27 * openness;
    const auto addOpening = [&] {
        cairo_move_to(cr, middle.x - 42, middle.y + 4);
        cairo_curve_to(cr, middle.x - 20, middle.y - lid, middle.x + 20, middle.y - lid,
                       middle.x + 42, middle.y + 2);
        cairo_curve_to(cr, middle.x + 18, middle.y + 20, middle.x - 20, middle.y + 20,
                       middle.x - 42, middle.y + 4);
        cairo_close_path(cr);
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
    for (double x = 0; x <= 1000; x += 40) cairo_line_to(cr, x, heightAt(x));
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

void DrawPortrait(Graphics::Surface& surface, const View& view) {
    DrawGarden(surface, view);
    const Graphics::CairoPointer context = MakeContext(surface, view, CameraSelection::kPrimary);
    cairo_t* const cr = context.get();
    DrawBokeh(cr);
    DrawHairBehind(cr);
    DrawNeck(cr);
    DrawJumper(cr);
    for (const double side : {-1.0, 1.0}) DrawEar(cr, side);
    DrawSkin(cr);
    DrawNose(cr);
    DrawMouth(cr);
    for (const double side : {-1.0, 1.0}) {
        DrawBrow(cr, side);
        AddGlow(cr, {kFace.x + side * kEyeSpacing, kEyeY}, 72, 44, 0xB06A48, 0.42);
    }
    DrawHairInFront(cr);
}

void DrawPortraitMotion(Graphics::Surface& surface, const View& view, long long number) {
    const Graphics::CairoPointer context = MakeContext(surface, view, CameraSelection::kSecondary);
    cairo_t* const cr = context.get();
    DrawBunting(cr, number);
    const double gaze = 5 * Sine(Phase(number, 310));
    for (const double side : {-1.0, 1.0}) {
        DrawEye(cr, {kFace.x + side * kEyeSpacing, kEyeY}, Openness(number), gaze);
    }
    DrawButterfly(cr, number);
    DrawPetals(cr, number);
}

}  // namespace Osp::Media::Scene
