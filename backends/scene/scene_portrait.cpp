#include "backends/scene/scene_portrait.h"

#include <array>

#include "osp/base/owner.h"

namespace Osp::Media::Scene {

namespace {

constexpr double kMiddle = 480;
constexpr Color kSkin = 0xF0C09A;
constexpr Color kSkinLight = 0xFBD9B8;
constexpr Color kSkinShade = 0xC98762;
constexpr Color kHair = 0x5B3220;

/// Fills the path with a glow that is `inner` at the centre and `outer` at the radius.
void FillGlow(cairo_t* cr, Place centre, double radius, Color inner, double innerAlpha, Color outer,
              double outerAlpha) {
    const Base::Owner<cairo_pattern_t, cairo_pattern_destroy> glow(
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
    AddOutline(cr, {480, 428},
               {{{250, 420}, {232, 640}, {236, 800}},
                {{238, 960}, {190, 1020}, {214, 1160}},
                {{330, 1200}, {630, 1200}, {746, 1160}},
                {{770, 1020}, {722, 960}, {724, 800}},
                {{728, 640}, {710, 420}, {480, 428}}});
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
    for (int y = 1130; y < 1640; y += 76) {
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
    AddOutline(cr, {396, 900},
               {{{404, 1000}, {396, 1040}, {384, 1062}},
                {{430, 1128}, {530, 1128}, {576, 1062}},
                {{564, 1040}, {556, 1000}, {564, 900}}});
    Fill(cr, 0xE0A67E);
    AddGlow(cr, {480, 950}, 150, 92, 0x8A4B30, 0.62);
}

void AddFace(cairo_t* cr) {
    AddOutline(cr, {480, 490},
               {{{340, 490}, {296, 590}, {300, 716}},
                {{304, 830}, {352, 930}, {420, 974}},
                {{458, 998}, {502, 998}, {540, 974}},
                {{608, 930}, {656, 830}, {660, 716}},
                {{664, 590}, {620, 490}, {480, 490}}});
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
    AddOutline(cr, {404, 872},
               {{{440, 876}, {520, 876}, {556, 872}}, {{538, 930}, {422, 930}, {404, 872}}});
    Fill(cr, 0x7A2328);
    AddOutline(cr, {412, 875},
               {{{444, 888}, {516, 888}, {548, 875}}, {{530, 904}, {430, 904}, {412, 875}}});
    Fill(cr, 0xFFFDF8);
    AddOutline(cr, {402, 870},
               {{{430, 860}, {458, 852}, {480, 862}},
                {{502, 852}, {530, 860}, {558, 870}},
                {{520, 884}, {440, 884}, {402, 870}}});
    Fill(cr, 0xC8535A);
    AddOutline(cr, {410, 884},
               {{{438, 920}, {522, 920}, {550, 884}}, {{524, 942}, {436, 942}, {410, 884}}});
    Fill(cr, 0xD8646A);
    AddGlow(cr, {474, 920}, 34, 8, 0xFFD6D2, 0.75);
    AddGlow(cr, {400, 870}, 11, 9, 0x9A5638, 0.4);
    AddGlow(cr, {560, 870}, 11, 9, 0x9A5638, 0.4);
}

void DrawBrow(cairo_t* cr, double side) {
    AddOutline(cr, {480 + side * 36, 661},
               {{{480 + side * 66, 642}, {480 + side * 112, 634}, {480 + side * 144, 667}},
                {{480 + side * 112, 650}, {480 + side * 68, 654}, {480 + side * 40, 671}},
                {{480 + side * 35, 673}, {480 + side * 32, 665}, {480 + side * 36, 661}}});
    Fill(cr, 0x4A2818, 0.92);
}

// A strand lies between the inner and the outer edge of the hair and ends before them.
void AddStrand(cairo_t* cr, int index, double side) {
    const double depth = Scatter(index, 142);
    const auto between = [&](Place inner, Place outer) {
        return Place{kMiddle + side * (inner.x + (outer.x - inner.x) * depth),
                     inner.y + (outer.y - inner.y) * depth};
    };
    const double curl = 30 * (Scatter(index, 143) - 0.5);
    const double end = 1010 + 140 * Scatter(index, 144);
    const Place root = between({16 * side, 522}, {22 * side, 440});
    const Place bend = between({150, 576}, {190, 424});
    const Place temple = between({186, 700}, {256, 560});
    const Place cheek = between({196, 860}, {250, 760});
    const Place shoulder = between({196, 930}, {258, 900});
    cairo_move_to(cr, root.x, root.y);
    cairo_curve_to(cr, bend.x, bend.y, temple.x, temple.y, cheek.x, cheek.y);
    cairo_curve_to(cr, shoulder.x, shoulder.y, shoulder.x + side * curl, end - 60,
                   shoulder.x + side * (curl - 6), end);
}

void DrawHairInFront(cairo_t* cr) {
    for (const double side : {-1.0, 1.0}) {
        AddOutline(cr, {510, 436},
                   {{{480 + side * 190, 420}, {480 + side * 256, 560}, {480 + side * 250, 760}},
                    {{480 + side * 250, 900}, {480 + side * 300, 1010}, {480 + side * 262, 1176}},
                    {{480 + side * 190, 1130}, {480 + side * 176, 1000}, {480 + side * 196, 860}},
                    {{480 + side * 188, 700}, {480 + side * 170, 590}, {510, 520}}});
        Fill(cr, kHair);
    }
    constexpr std::array<Color, 4> kShades = {0x7C4A2E, 0x3D2015, 0xA0683C, 0x6A3B24};
    for (int i = 0; i < 260; ++i) {
        AddStrand(cr, i, i % 2 ? 1 : -1);
        Stroke(cr, kShades[static_cast<std::size_t>(i / 2) % kShades.size()],
               1.2 + 2.2 * Scatter(i, 141), 0.6);
    }
    AddGlow(cr, {400, 500}, 100, 40, 0xD89A62, 0.35);
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
    for (const double side : {-1.0, 1.0}) DrawBrow(cr, side);
    for (const Place& eye : kPortraitEyes) AddGlow(cr, eye, 72, 44, 0xB06A48, 0.42);
    DrawHairInFront(cr);
}

}  // namespace Osp::Media::Scene
