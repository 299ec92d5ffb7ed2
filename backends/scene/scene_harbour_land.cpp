#include <array>

#include "backends/scene/scene_harbour_props.h"

namespace Osp::Media::Scene {

namespace {

constexpr Color kSkin = 0xE8B48C;
constexpr Color kSkinShade = 0xC98D66;

void DrawHouse(cairo_t* cr, int index, Place base) {
    constexpr std::array<Color, 5> kWalls = {0xF6EBD6, 0xEFD9A7, 0xFFFFFF, 0xE8C4A4, 0xDDE6EA};
    constexpr std::array<Color, 3> kRoofs = {0xB9502F, 0xC9663A, 0x9A4A38};
    const double width = 20 + 16 * Scatter(index, 51);
    const double height = 16 + 20 * Scatter(index, 52);
    const double top = base.y - height;
    cairo_rectangle(cr, base.x, top, width, height);
    Fill(cr, kWalls[static_cast<std::size_t>(index) % kWalls.size()]);
    cairo_rectangle(cr, base.x + width * 0.7, top, width * 0.3, height);
    Fill(cr, 0x6A5A50, 0.18);
    AddPolygon(cr, {{base.x - 2, top},
                    {base.x + width * 0.3, top - 10},
                    {base.x + width * 0.75, top - 10},
                    {base.x + width + 2, top}});
    Fill(cr, kRoofs[static_cast<std::size_t>(index) % kRoofs.size()]);
    for (double y = top + 4; y + 6 < base.y; y += 10) {
        for (double x = base.x + 4; x + 4 < base.x + width; x += 8)
            cairo_rectangle(cr, x, y, 3.4, 5.2);
    }
    Fill(cr, 0x3C5468);
}

struct Child {
    Place feet;
    double height;
    Color shirt;
    Color trousers;
    Color hair;
    Place leftHand;  // measured in heights from the feet
    Place rightHand;
};

void DrawLimb(cairo_t* cr, Place from, Place to, double width, Color color) {
    cairo_move_to(cr, from.x, from.y);
    cairo_line_to(cr, to.x, to.y);
    Stroke(cr, color, width);
}

void DrawFigure(cairo_t* cr, const Child& child) {
    const double h = child.height;
    const auto at = [&](double x, double y) {
        return Place{child.feet.x + x * h, child.feet.y + y * h};
    };
    AddEllipse(cr, at(0.16, 0.0), 0.34 * h, 0.045 * h);
    Fill(cr, 0x6B5030, 0.35);
    DrawLimb(cr, at(-0.06, -0.3), at(-0.08, -0.02), 0.085 * h, kSkinShade);
    DrawLimb(cr, at(0.06, -0.3), at(0.09, -0.02), 0.085 * h, kSkin);
    AddPolygon(cr, {at(-0.12, -0.46), at(0.12, -0.46), at(0.13, -0.24), at(0.01, -0.25),
                    at(0, -0.36), at(-0.02, -0.25), at(-0.13, -0.24)});
    Fill(cr, child.trousers);
    DrawLimb(cr, at(-0.11, -0.7), {at(child.leftHand.x, child.leftHand.y)}, 0.07 * h, kSkinShade);
    AddPolygon(cr, {at(-0.1, -0.76), at(0.1, -0.76), at(0.16, -0.64), at(0.12, -0.44),
                    at(-0.12, -0.44), at(-0.16, -0.64)});
    Fill(cr, child.shirt);
    for (const double y : {-0.7, -0.62, -0.54}) {
        cairo_rectangle(cr, at(-0.12, y).x, at(-0.12, y).y, 0.24 * h, 0.03 * h);
    }
    Fill(cr, kWhite, 0.8);
    DrawLimb(cr, at(0.11, -0.7), {at(child.rightHand.x, child.rightHand.y)}, 0.07 * h, kSkin);
    DrawLimb(cr, at(0, -0.82), at(0, -0.75), 0.08 * h, kSkinShade);
    AddEllipse(cr, at(0, -0.89), 0.1 * h, 0.115 * h);
    Fill(cr, kSkin);
    AddEllipse(cr, at(-0.035, -0.94), 0.105 * h, 0.085 * h);
    Fill(cr, child.hair);
}

}  // namespace

void DrawVillage(cairo_t* cr) {
    for (int i = 0; i < 34; ++i) {
        // Back rows first; the hill carries them only where it is high enough.
        const int row = i / 12;
        const double x = 150 + (260 + 110 * row) * Scatter(i, 53);
        DrawHouse(cr, i, {x, 352 + 20 * row + 6 * Scatter(i, 54)});
    }
    cairo_rectangle(cr, 330, 268, 20, 96);  // the church
    Fill(cr, 0xFAF3E3);
    AddPolygon(cr, {{326, 268}, {340, 232}, {354, 268}});
    Fill(cr, 0x9A4A38);
    AddEllipse(cr, {340, 288}, 6, 6);
    Fill(cr, kInk);
    AddPolygon(cr, {{60, 396}, {690, 392}, {742, 404}, {60, 408}});  // the quay
    Fill(cr, 0xA79B8A);
    for (int i = 0; i < 24; ++i) {  // masts of the boats in the harbour
        const double x = 180 + 21.5 * i + 6 * Scatter(i, 55);
        cairo_rectangle(cr, x, 360 - 16 * Scatter(i, 56), 1.6, 42 + 16 * Scatter(i, 56));
    }
    Fill(cr, 0xF5F2EA);
}

void DrawLighthouse(cairo_t* cr) {
    AddPolygon(cr, {{1040, 420}, {1075, 402}, {1700, 396}, {1700, 440}, {1046, 432}});
    Fill(cr, 0x8B8378);
    for (int i = 0; i < 70; ++i) {  // the stones of the pier
        const double x = 1046 + 560 * Scatter(i, 57);
        AddEllipse(cr, {x, 424 + 12 * Scatter(i, 58)}, 7 + 6 * Scatter(i, 59), 5);
        Fill(cr, i % 2 ? 0x6F685F : 0xA8A093);
    }
    constexpr double kTop = 214;
    constexpr double kBottom = 410;
    const auto halfWidth = [](double y) { return 17 + 10 * (y - kTop) / (kBottom - kTop); };
    for (int band = 0; band < 5; ++band) {
        const double top = kTop + band * (kBottom - kTop) / 5;
        const double bottom = top + (kBottom - kTop) / 5;
        AddPolygon(cr, {{1170 - halfWidth(top), top},
                        {1170 + halfWidth(top), top},
                        {1170 + halfWidth(bottom), bottom},
                        {1170 - halfWidth(bottom), bottom}});
        Fill(cr, band % 2 ? kRed : kWhite);
    }
    AddPolygon(cr, {{1176, kTop}, {1187, kTop}, {1197, kBottom}, {1182, kBottom}});
    Fill(cr, 0x27313C, 0.2);
    cairo_rectangle(cr, 1147, 206, 46, 9);
    cairo_rectangle(cr, 1166, 300, 8, 14);
    cairo_rectangle(cr, 1165, 352, 9, 15);
    Fill(cr, kInk);
    cairo_rectangle(cr, 1157, 178, 26, 28);
    Fill(cr, 0xFFE9A0);
    AddPolygon(cr, {{1151, 179}, {1170, 158}, {1189, 179}});
    Fill(cr, kRed);
}

void DrawParasol(cairo_t* cr) {
    AddEllipse(cr, {470, 858}, 190, 26);
    Fill(cr, 0x6B5030, 0.3);
    AddPolygon(cr, {{330, 846}, {540, 836}, {590, 872}, {350, 884}});  // the towel
    Fill(cr, 0x1E9BB0);
    for (int i = 0; i < 6; ++i) {
        const double x = 344 + 36 * i;
        AddPolygon(cr, {{x, 846 - 1.6 * i},
                        {x + 14, 845 - 1.6 * i},
                        {x + 22, 882 - 1.8 * i},
                        {x + 6, 883 - 1.8 * i}});
    }
    Fill(cr, kWhite);
    cairo_move_to(cr, 436, 590);
    cairo_line_to(cr, 462, 858);
    Stroke(cr, 0xEADCC0, 7);
    constexpr std::array<Color, 2> kStripes = {kRed, kWhite};
    constexpr int kSegments = 8;
    for (int i = 0; i < kSegments; ++i) {
        const double from = 262 + 42.5 * i;
        const double to = from + 42.5;
        const double sagFrom = 684 - 0.00085 * (from - 432) * (from - 432) + (from - 262) * -0.03;
        const double sagTo = 684 - 0.00085 * (to - 432) * (to - 432) + (to - 262) * -0.03;
        cairo_move_to(cr, 432, 574);
        cairo_curve_to(cr, 432 + (from - 432) * 0.5, 578, 432 + (from - 432) * 0.88, 620, from,
                       sagFrom);
        cairo_curve_to(cr, from + 14, sagFrom + 14, to - 14, sagTo + 14, to, sagTo);
        cairo_curve_to(cr, 432 + (to - 432) * 0.88, 620, 432 + (to - 432) * 0.5, 578, 432, 574);
        cairo_close_path(cr);
        Fill(cr, kStripes[static_cast<std::size_t>(i) % 2]);
    }
    cairo_move_to(cr, 432, 574);
    cairo_curve_to(cr, 520, 580, 575, 620, 602, 660);
    cairo_curve_to(cr, 560, 684, 500, 692, 470, 690);
    cairo_close_path(cr);
    Fill(cr, 0x431510, 0.17);
    AddEllipse(cr, {431, 570}, 7, 8);
    Fill(cr, kYellow);
}

void DrawSignBoard(cairo_t* cr) {
    AddEllipse(cr, {1290, 872}, 150, 18);
    Fill(cr, 0x6B5030, 0.3);
    cairo_rectangle(cr, 1176, 690, 16, 184);
    cairo_rectangle(cr, 1378, 690, 16, 184);
    Fill(cr, 0x6E4A2B);
    cairo_rectangle(cr, 1146, 676, 280, 138);
    Fill(cr, 0x184E77);
    cairo_rectangle(cr, 1154, 684, 264, 122);
    Stroke(cr, kWhite, 3);
    AddText(cr, {1190, 699}, 42, "KIVO");
    Stroke(cr, kYellow, 7.5);
    AddText(cr, {1176, 760}, 26, "SURF CAFE");
    Stroke(cr, kWhite, 4.2);
    AddPolygon(cr, {{1366, 738}, {1386, 738}, {1376, 762}});
    Fill(cr, 0xE2A65A);
    AddEllipse(cr, {1376, 728}, 12, 12);
    Fill(cr, 0xF48FB1);
}

void DrawPeople(cairo_t* cr) {
    DrawFigure(cr, {{1000, 806}, 152, 0xE4572E, 0x2A4B8D, 0x5A3820, {-0.2, -0.52}, {0.08, -0.934}});
    DrawFigure(cr, {{770, 752}, 118, 0x2F9E63, 0xF2C14E, 0x2B2018, {-0.25, -0.58}, {0.26, -0.78}});
    DrawFigure(cr, {{640, 748}, 112, 0x7B4FA3, 0xE86A92, 0xC98A3A, {-0.24, -0.76}, {0.24, -0.6}});
}

}  // namespace Osp::Media::Scene
