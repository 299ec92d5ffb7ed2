#include "develop/contact_sheet.h"

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include <osp/graphics/bitmap.h>
#include <osp/graphics/canvas.h>

#include "develop/developer.h"
#include "develop/pictures/picture_files.h"
#include "develop/sheet_layout.h"
#include "osp/graphics/access.h"
#include "osp/graphics/bitmap_pixels.h"
#include "osp/graphics/surface.h"

namespace Kivo::Tools {

namespace {

using Osp::Graphics::Access;
using Osp::Graphics::Bitmap;
using Osp::Graphics::BitmapPixels;
using Osp::Graphics::Canvas;
using Osp::Graphics::Color;
using Osp::Graphics::Dimension;
using Osp::Graphics::Rectangle;
using Osp::Graphics::Surface;
using Osp::Media::EncodedPicture;
using Osp::Media::PixelLayout;
using Osp::Media::PixelView;

constexpr Color kPaper{0xED, 0xE4, 0xD2};
constexpr Color kInk{0x1C, 0x1A, 0x17};
constexpr Color kCream{0xFA, 0xF5, 0xEA};

/// The colours of the six cameras, and of the words on them.
struct Label {
    Color ground;
    Color text;
};
constexpr std::array<Label, kCameraTypeNames.size()> kLabels{{{{0xCF, 0x3A, 0x20}, kCream},
                                                              {{0x41, 0x44, 0x4B}, kCream},
                                                              {{0xF0, 0xA8, 0x1C}, kInk},
                                                              {{0x16, 0x78, 0x7C}, kCream},
                                                              {{0x8C, 0x3F, 0x7C}, kCream},
                                                              {{0x4C, 0x74, 0x32}, kCream}}};

// In pixels.
constexpr int kCaptionFont = 22;
constexpr int kLabelFont = 34;
constexpr Dimension kHole{14, 10};
constexpr int kHolePitch = 24;
constexpr int kHoleRadius = 3;

/// The largest rectangle of the picture's shape in the middle of `frame`.
Rectangle FitInto(const Rectangle& frame, const Dimension& picture) {
    const double scale = std::min(static_cast<double>(frame.width) / picture.width,
                                  static_cast<double>(frame.height) / picture.height);
    const int width = std::max(static_cast<int>(picture.width * scale), 1);
    const int height = std::max(static_cast<int>(picture.height * scale), 1);
    return {frame.x + (frame.width - width) / 2, frame.y + (frame.height - height) / 2, width,
            height};
}

std::string TextOf(std::string_view name) {
    return std::string(name);
}

class Sheet {
  public:
    /// For pictures of one size.
    explicit Sheet(const Dimension& picture)
        : layout_(picture),
          surface_(std::make_shared<Surface>(layout_.Sheet(), Surface::Kind::kOpaque)),
          canvas_(Access::MakeCanvas(surface_)) {
        (void)canvas_.FillRectangle(kPaper, canvas_.GetBounds());
        for (int type = 0; type < SheetLayout::kTypes; ++type) DrawFilm(type);
    }

    void Add(CameraType type, PhotoEffect effect, const PixelView& picture) {
        const auto column = static_cast<int>(type);
        const auto row = static_cast<int>(effect);
        Osp::Base::Block rgba(PackedSize(picture.size, picture.layout));
        std::copy_n(picture.pixels, rgba.size(), rgba.data());
        const Bitmap bitmap =
            Access::MakeBitmap(std::make_shared<BitmapPixels>(picture.size, std::move(rgba)));
        (void)canvas_.DrawBitmap(FitInto(layout_.Frame(column, row), picture.size), bitmap);
        DrawCentred(layout_.Caption(column, row),
                    TextOf(NameOf(type)) + " (" + TextOf(NameOf(effect)) + ")",
                    Osp::Graphics::kFontStylePlain, kCaptionFont, kCream);
    }

    Problem Encode(PictureFormat format, EncodedPicture& encoded) const {
        const Dimension size = surface_->GetDimension();
        const BitmapPixels pixels(size, surface_);
        return EncodePicture(format, PackedView(pixels.Rgba(), size, PixelLayout::kRgba), {},
                             encoded);
    }

  private:
    void DrawFilm(int type) {
        const auto [ground, text] = kLabels[static_cast<std::size_t>(type)];
        const Rectangle label = layout_.Label(type);
        (void)canvas_.FillRoundRectangle(ground, label, label.height / 2);
        DrawCentred(label, TextOf(NameOf(static_cast<CameraType>(type))),
                    Osp::Graphics::kFontStyleBold, kLabelFont, text);
        const Rectangle film = layout_.Film(type);
        (void)canvas_.FillRectangle(kInk, film);
        const int inset = (SheetLayout::kPerforation - kHole.width) / 2;
        for (int y = film.y + inset; y + kHole.height <= film.y + film.height; y += kHolePitch) {
            for (const int x : {film.x + inset, film.x + film.width - inset - kHole.width}) {
                (void)canvas_.FillRoundRectangle(kPaper, {x, y, kHole.width, kHole.height},
                                                 kHoleRadius);
            }
        }
    }

    void DrawCentred(const Rectangle& box, const std::string& words, int style, int fontSize,
                     const Color& color) {
        const Osp::Base::String text(words);
        Osp::Graphics::Font font;
        (void)font.Construct(style, fontSize);
        (void)canvas_.SetFont(font);
        canvas_.SetForegroundColor(color);
        const Dimension size = canvas_.MeasureText(text);
        (void)canvas_.DrawText(
            {box.x + (box.width - size.width) / 2, box.y + (box.height - size.height) / 2}, text);
    }

    SheetLayout layout_;
    std::shared_ptr<Surface> surface_;
    Canvas canvas_;
};

/// Calls `add` with every combination.
Problem DevelopAll(Developer& developer, Recipe recipe,
                   const std::function<void(const Recipe&, const PixelView&)>& add) {
    for (int type = 0; type < SheetLayout::kTypes; ++type) {
        for (int effect = 0; effect < SheetLayout::kEffects; ++effect) {
            recipe.type = static_cast<CameraType>(type);
            recipe.effect = static_cast<PhotoEffect>(effect);
            PixelView picture;
            Problem problem = developer.Develop(recipe, picture);
            if (!problem.empty()) return problem;
            add(recipe, picture);
        }
    }
    return {};
}

}  // namespace

Outcome MakeContactSheet(const Recipe& recipe, std::span<const std::string> inputs,
                         const std::string& output) {
    PictureFormat format{};
    PictureFiles files;  // before the developer, which reads them
    Effects::EffectTables tables;
    Developer developer(tables, true);
    std::optional<Sheet> sheet;
    EncodedPicture encoded;
    Problem problem = CheckOutput(output, IdsOf(inputs));
    if (problem.empty()) problem = files.Read(inputs);
    if (problem.empty()) problem = FindFormat(output, files.Sources()[0], format);
    if (problem.empty()) problem = developer.Load(files.Sources());
    if (problem.empty()) {
        problem = DevelopAll(developer, recipe, [&](const Recipe& own, const PixelView& picture) {
            if (!sheet) sheet.emplace(picture.size);
            sheet->Add(own.type, own.effect, picture);
        });
    }
    if (problem.empty()) problem = sheet->Encode(format, encoded);
    if (!problem.empty()) return {problem};
    Outcome outcome = WriteFile(output, encoded);
    outcome.warnings = developer.Warnings();
    return outcome;
}

}  // namespace Kivo::Tools
