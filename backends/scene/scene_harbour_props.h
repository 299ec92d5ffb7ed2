// The things that stand and move in the harbour scene.
#pragma once

#include "backends/scene/scene_drawing.h"

/// All in the world units of the scene.
namespace Osp::Media::Scene {

constexpr Color kInk = 0x1F2A36;
constexpr Color kRed = 0xD9322B;
constexpr Color kYellow = 0xF6B81F;
constexpr Color kWhite = 0xFBF8F0;

constexpr double kHarbourHorizon = 400;

/// Where the water ends.
double HarbourShoreAt(double x);

/// Where the child stands who holds the string of the large kite.
constexpr Place kKiteHand{1012, 664};

void DrawVillage(cairo_t* cr);
void DrawLighthouse(cairo_t* cr);
void DrawParasol(cairo_t* cr);
void DrawSignBoard(cairo_t* cr);
void DrawPeople(cairo_t* cr);
void DrawDuneGrass(cairo_t* cr);

/// As they are at frame `number`.
void DrawGlitter(cairo_t* cr, long long number);
void DrawBoats(cairo_t* cr, long long number);
void DrawGulls(cairo_t* cr, long long number);
void DrawKites(cairo_t* cr, long long number);
void DrawBall(cairo_t* cr, long long number);
void DrawSwayingGrass(cairo_t* cr, long long number);

}  // namespace Osp::Media::Scene
