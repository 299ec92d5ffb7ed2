#include <array>

#include "backends/scene/scene_harbour_props.h"

namespace Osp::Media::Scene {

namespace {

void AddSwayingBlade(cairo_t* cr, int index, double left, double right, double sway) {
    const double x = left + (right - left) * Scatter(index, 61);
    const double length = 70 + 130 * Scatter(index, 62);
    const double lean = (Scatter(index, 63) - 0.35) * 110 + sway * (0.5 + Scatter(index, 64));
    const double root = 975 - 26 * Scatter(index, 65);
    AddBlade(cr, {x, root}, {x + lean, root - length}, lean * 0.12, 2.2 + 3.2 * Scatter(index, 66));
}

// Each blade by itself: one path of many slows the filling down.
void DrawGrass(cairo_t* cr, int first, int count, double left, double right, double sway) {
    constexpr std::array<Color, 5> kGreens = {0x5B7A2E, 0x86A03C, 0xB7B357, 0x3F6128, 0xD8C878};
    for (int i = first; i < first + count; ++i) {
        AddSwayingBlade(cr, i, left, right, sway);
        Fill(cr, kGreens[static_cast<std::size_t>(i) % kGreens.size()]);
    }
}

struct Boat {
    int period;  // frames for one crossing
    double start;
    double waterline;
    double size;
    Color sail;
    Color hull;
    const char* number;  // a literal; on the sail
};
constexpr std::array kBoats = {
    Boat{5400, 0.34, 446, 0.42, 0xF4F1E6, 0x35506B, ""},
    Boat{4200, 0.66, 470, 0.75, 0xF08A1D, 0x7A3B22, "29"},
    Boat{3300, 0.47, 512, 1.35, 0xE0342C, 0xF7F4EA, "27"},
};

void DrawBoat(cairo_t* cr, const Boat& boat, long long number) {
    const double along = Phase(number, boat.period) + boat.start;
    const double x = -200 + 2000 * (along - static_cast<int>(along));
    const double bob = Sine(Phase(number, 130) + boat.start);
    cairo_save(cr);
    cairo_translate(cr, x, boat.waterline + 1.6 * boat.size * bob);
    const double lean = 0.035 * Sine(Phase(number, 170) + boat.start * 3) - 0.05;
    const cairo_matrix_t heel = {boat.size, 0, lean * boat.size, boat.size, 0, 0};
    // The reflection is broken up by the waves.
    for (int i = 0; i < 6; ++i) {
        const double shift = 7 * Sine(Phase(number, 45) + i * 0.37);
        const double width = (46 - 6 * i) * boat.size;
        cairo_rectangle(cr, -width + shift * boat.size, (10 + 7 * i) * boat.size, 1.7 * width,
                        3.2 * boat.size);
    }
    Fill(cr, boat.sail, 0.32);
    cairo_transform(cr, &heel);
    AddPolygon(cr, {{4, -128}, {4, -14}, {62, -16}});
    Fill(cr, boat.sail);
    AddPolygon(cr, {{4, -128}, {4, -14}, {22, -15}});
    Fill(cr, 0x5A1A10, 0.16);
    AddPolygon(cr, {{-4, -112}, {-4, -16}, {-46, -18}});
    Fill(cr, kWhite);
    cairo_rectangle(cr, -2, -134, 3.4, 126);
    Fill(cr, 0x6B4A2C);
    AddPolygon(cr, {{-58, -10}, {66, -10}, {48, 10}, {-42, 10}});
    Fill(cr, boat.hull);
    cairo_rectangle(cr, -53, -6, 113, 4);
    Fill(cr, kRed);
    AddText(cr, {14, -56}, 22, boat.number);
    Stroke(cr, kWhite, 4);
    cairo_restore(cr);
}

void DrawKite(cairo_t* cr, Place middle, double size, double tilt, long long number,
              const std::array<Color, 4>& colors) {
    cairo_save(cr);
    cairo_translate(cr, middle.x, middle.y);
    for (int i = 0; i < 12; ++i) {  // the tail hangs down and waves
        const double y = size * (1.0 + 0.2 * i);
        const double x = size * (0.03 * i) * Sine(Phase(number, 50) - i * 0.09) + tilt * i * 3;
        AddPolygon(cr, {{x - 5, y - 5}, {x + 5, y + 4}, {x + 6, y - 5}, {x - 5, y + 5}});
        Fill(cr, colors[static_cast<std::size_t>(i) % colors.size()]);
    }
    const cairo_matrix_t turn = {1, tilt, -tilt, 1, 0, 0};
    cairo_transform(cr, &turn);
    const Place top{0, -size};
    const Place bottom{0, size};
    const Place left{-size * 0.68, -size * 0.22};
    const Place right{size * 0.68, -size * 0.22};
    const Place centre{0, -size * 0.22};
    AddPolygon(cr, {top, left, centre});
    Fill(cr, colors[0]);
    AddPolygon(cr, {top, right, centre});
    Fill(cr, colors[1]);
    AddPolygon(cr, {bottom, left, centre});
    Fill(cr, colors[2]);
    AddPolygon(cr, {bottom, right, centre});
    Fill(cr, colors[3]);
    AddPolygon(cr, {top, left, bottom, right});
    Stroke(cr, kInk, 1.6, 0.7);
    cairo_restore(cr);
}

}  // namespace

void DrawDuneGrass(cairo_t* cr) {
    DrawGrass(cr, 0, 190, -40, 330, 0);
    DrawGrass(cr, 400, 150, 1330, 1640, 0);
    DrawGrass(cr, 700, 60, 330, 1330, 0);
}

void DrawGlitter(cairo_t* cr, long long number) {
    constexpr int kSparkles = 260;
    constexpr int kLife = 24;  // frames
    for (int i = 0; i < kSparkles; ++i) {
        const long long moment = number + static_cast<long long>(Scatter(i, 71) * kLife);
        // Every life is somewhere else.
        const int life = static_cast<int>(moment / kLife % 1000) * kSparkles + i;
        const double y = kHarbourHorizon + 4 + 164 * Scatter(life, 73) * Scatter(life, 74);
        const double spread = 240 + (y - kHarbourHorizon) * 2.6;
        const double x = 860 + (Scatter(life, 72) - 0.5) * 2 * spread;
        const double grown = Sine(Phase(moment, kLife) / 2);
        const double width = (3 + (y - kHarbourHorizon) * 0.075) * grown;
        AddPolygon(cr,
                   {{x - width, y}, {x, y - width * 0.22}, {x + width, y}, {x, y + width * 0.22}});
    }
    Fill(cr, 0xFFFFF4, 0.9);
}

void DrawBoats(cairo_t* cr, long long number) {
    for (const Boat& boat : kBoats) DrawBoat(cr, boat, number);
}

void DrawGulls(cairo_t* cr, long long number) {
    for (int i = 0; i < 6; ++i) {
        const int period = 900 + 130 * i;
        const double along = Phase(number, period) + Scatter(i, 81);
        const double x = 1750 - 1900 * (along - static_cast<int>(along));
        const double y = 90 + 200 * Scatter(i, 82) + 16 * Sine(Phase(number, 210) + i * 0.3);
        const double flap = Sine(Phase(number, 17 + i) + i * 0.2);
        const double span = 15 + 9 * Scatter(i, 83);
        cairo_move_to(cr, x - span, y - span * 0.5 * flap);
        cairo_curve_to(cr, x - span * 0.5, y - span * 0.3, x - 3, y - 2, x, y + 1.5);
        cairo_curve_to(cr, x + 3, y - 2, x + span * 0.5, y - span * 0.3, x + span,
                       y - span * 0.5 * flap);
        Stroke(cr, 0x35414D, 2.4);
    }
}

void DrawKites(cairo_t* cr, long long number) {
    const double swing = Sine(Phase(number, 260));
    const Place large{820 + 70 * swing, 196 + 26 * Sine(Phase(number, 130) + 0.2)};
    cairo_move_to(cr, kKiteHand.x, kKiteHand.y);
    cairo_curve_to(cr, 980, 560, 880 + 40 * swing, 380, large.x, large.y);
    Stroke(cr, 0xFFFFFF, 1.3, 0.75);
    DrawKite(cr, large, 62, 0.16 * swing, number, {0xE23B2E, 0xF9C22E, 0x2F7FD6, 0x35A85A});
    const double other = Sine(Phase(number, 330) + 0.4);
    DrawKite(cr, {1330 + 44 * other, 120 + 18 * Sine(Phase(number, 165))}, 38, 0.2 * other, number,
             {0xE83E8C, 0x7A3FF2, 0xFDE74C, 0xE83E8C});
}

void DrawBall(cairo_t* cr, long long number) {
    const double flight = Phase(number, 90);
    const double there = flight < 0.5 ? flight * 2 : 2 - flight * 2;
    const double arc = flight < 0.5 ? there : 1 - there;
    const Place middle{668 + 72 * there, 672 - 300 * arc * (1 - arc)};
    AddEllipse(cr, {middle.x + 10, 752}, 16, 4);
    Fill(cr, 0x6B5030, 0.35);
    AddEllipse(cr, middle, 15, 15);
    Fill(cr, kWhite);
    const double spin = Sine(Phase(number, 45)) * 7;
    AddEllipse(cr, {middle.x + spin * 0.4, middle.y}, 5.5, 15);
    Fill(cr, kRed);
    AddEllipse(cr, {middle.x - 4, middle.y - 6}, 3, 2.4);
    Fill(cr, 0xFFFFFF, 0.9);
    AddEllipse(cr, middle, 15, 15);
    Stroke(cr, kInk, 1.2, 0.5);
}

void DrawSwayingGrass(cairo_t* cr, long long number) {
    const double wind = 15 * Sine(Phase(number, 150)) + 7 * Sine(Phase(number, 61));
    DrawGrass(cr, 900, 30, 30, 420, wind);
    DrawGrass(cr, 960, 20, 1290, 1600, wind * 0.9);
}

}  // namespace Osp::Media::Scene
