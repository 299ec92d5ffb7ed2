#include "backends/scene/scene_drawing.h"

#include <array>
#include <numbers>

namespace Osp::Media::Scene {

namespace {

// Points of a grid 4 wide and 6 high; a blank begins a new stroke.
struct Glyph {
    char character;
    std::string_view strokes;
};
constexpr std::array kGlyphs = {
    Glyph{'A', "062046 1434"},
    Glyph{'B', "000636454433030 003041423303"},
    Glyph{'C', "4130100105163645"},
    Glyph{'E', "40000646 0333"},
    Glyph{'F', "400006 0333"},
    Glyph{'H', "0006 4046 0343"},
    Glyph{'I', "2026"},
    Glyph{'K', "0006 400346"},
    Glyph{'N', "06004640"},
    Glyph{'O', "103041453616050110"},
    Glyph{'R', "06003041423303 2346"},
    Glyph{'S', "4130100112324345361605"},
    Glyph{'T', "0040 2026"},
    Glyph{'U', "000516364540"},
    Glyph{'V', "002640"},
    Glyph{'2', "01103041420646"},
    Glyph{'7', "004016"},
    Glyph{'9', "4333030110304145361605"},
};
constexpr double kGridHeight = 6;
constexpr double kAdvance = 5.6;

void AddStrokes(cairo_t* cr, Place topLeft, double unit, std::string_view strokes) {
    bool isNew = true;
    for (std::size_t i = 0; i < strokes.size(); ++i) {
        if (strokes[i] == ' ') {
            isNew = true;
            continue;
        }
        const double x = topLeft.x + (strokes[i] - '0') * unit;
        const double y = topLeft.y + (strokes[++i] - '0') * unit;
        isNew ? cairo_move_to(cr, x, y) : cairo_line_to(cr, x, y);
        isNew = false;
    }
}

}  // namespace

View MakeView(const Graphics::Dimension& upright, const Graphics::Dimension& world, int zoomStep) {
    const bool isLandscape = world.width > world.height;
    const double fit = isLandscape ? static_cast<double>(upright.height) / world.height
                                   : static_cast<double>(upright.width) / world.width;
    const double scale = fit * (2 + zoomStep) / 2;
    return {upright, scale, world.width / 2.0 - upright.width / (2 * scale),
            world.height / 2.0 - upright.height / (2 * scale)};
}

Graphics::CairoPointer MakeContext(Graphics::Surface& surface, const View& view,
                                   CameraSelection mounting) {
    Graphics::CairoPointer context(cairo_create(surface.Cairo()));
    cairo_matrix_t matrix;
    if (mounting == CameraSelection::kPrimary) {
        cairo_matrix_init(&matrix, view.scale, 0, 0, view.scale, -view.left * view.scale,
                          -view.top * view.scale);
    } else {
        cairo_matrix_init(&matrix, 0, -view.scale, view.scale, 0, -view.top * view.scale,
                          view.size.width + view.left * view.scale);
    }
    cairo_set_matrix(context.get(), &matrix);
    cairo_set_line_cap(context.get(), CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(context.get(), CAIRO_LINE_JOIN_ROUND);
    return context;
}

Noise::Noise(const View& view, float width, float height, std::uint32_t seed)
    : perUnitX_(1 / width), perUnitY_(1 / height), seed_(seed) {
    const float left = static_cast<float>(view.left) * perUnitX_;
    const float columns = static_cast<float>(view.size.width / view.scale) * perUnitX_;
    firstX_ = static_cast<float>(static_cast<int>(left)) - 2;
    const auto count = static_cast<std::size_t>(columns) + 6;
    above_.resize(count);
    below_.resize(count);
    blended_.resize(count);
}

void Noise::FillLattice(int row, std::vector<float>& values) const {
    const std::uint32_t rowSeed = static_cast<std::uint32_t>(row) * 0x85EBCA77U;
    const auto first = static_cast<std::uint32_t>(static_cast<int>(firstX_));
    for (std::size_t i = 0; i < values.size(); ++i) {
        const std::uint32_t cell = (first + static_cast<std::uint32_t>(i)) * 0x9E3779B1U ^ rowSeed;
        values[i] = static_cast<float>(Hash(cell + seed_) >> 8) * (1.0F / 16777216.0F);
    }
}

void Noise::MoveTo(float y) {
    const float place = y * perUnitY_;
    const int row = static_cast<int>(place) - (place < 0 ? 1 : 0);
    if (row != row_) {
        FillLattice(row, above_);
        FillLattice(row + 1, below_);
        row_ = row;
    }
    const float fraction = place - static_cast<float>(row);
    const float share = fraction * fraction * (3 - 2 * fraction);
    for (std::size_t i = 0; i < blended_.size(); ++i) {
        blended_[i] = Mix(above_[i], below_[i], share);
    }
}

void SetColor(cairo_t* cr, Color color, double alpha) {
    cairo_set_source_rgba(cr, (color >> 16 & 255) / 255.0, (color >> 8 & 255) / 255.0,
                          (color & 255) / 255.0, alpha);
}

void Fill(cairo_t* cr, Color color, double alpha) {
    SetColor(cr, color, alpha);
    cairo_fill(cr);
}

void Stroke(cairo_t* cr, Color color, double width, double alpha) {
    SetColor(cr, color, alpha);
    cairo_set_line_width(cr, width);
    cairo_stroke(cr);
}

void AddPolygon(cairo_t* cr, std::initializer_list<Place> corners) {
    cairo_new_sub_path(cr);
    for (const Place& corner : corners) cairo_line_to(cr, corner.x, corner.y);
    cairo_close_path(cr);
}

void AddOutline(cairo_t* cr, Place start, std::initializer_list<Curve> curves) {
    cairo_move_to(cr, start.x, start.y);
    for (const auto& [leaving, arriving, end] : curves) {
        cairo_curve_to(cr, leaving.x, leaving.y, arriving.x, arriving.y, end.x, end.y);
    }
    cairo_close_path(cr);
}

void AddEllipse(cairo_t* cr, Place centre, double radiusX, double radiusY) {
    // Four Bezier curves; the constant makes them a circle to a fiftieth of a percent.
    constexpr double kCircle = 0.5522847498;
    const auto [x, y] = centre;
    const double dx = radiusX * kCircle;
    const double dy = radiusY * kCircle;
    cairo_move_to(cr, x + radiusX, y);
    cairo_curve_to(cr, x + radiusX, y + dy, x + dx, y + radiusY, x, y + radiusY);
    cairo_curve_to(cr, x - dx, y + radiusY, x - radiusX, y + dy, x - radiusX, y);
    cairo_curve_to(cr, x - radiusX, y - dy, x - dx, y - radiusY, x, y - radiusY);
    cairo_curve_to(cr, x + dx, y - radiusY, x + radiusX, y - dy, x + radiusX, y);
    cairo_close_path(cr);
}

void AddBlade(cairo_t* cr, Place root, Place tip, double bend, double width) {
    const double middleY = root.y + (tip.y - root.y) * 0.55;
    const double middleX = root.x + bend;
    cairo_move_to(cr, root.x - width / 2, root.y);
    cairo_curve_to(cr, root.x - width / 2, middleY, middleX, middleY, tip.x, tip.y);
    cairo_curve_to(cr, middleX + width / 2, middleY, root.x + width / 2, middleY,
                   root.x + width / 2, root.y);
    cairo_close_path(cr);
}

double AddText(cairo_t* cr, Place topLeft, double height, std::string_view text) {
    const double unit = height / kGridHeight;
    Place pen = topLeft;
    for (const char character : text) {
        const auto* const glyph = std::ranges::find(kGlyphs, character, &Glyph::character);
        if (glyph != kGlyphs.end()) AddStrokes(cr, pen, unit, glyph->strokes);
        pen.x += kAdvance * unit;
    }
    return pen.x - topLeft.x;
}

}  // namespace Osp::Media::Scene
