// The camera screen's effect operations, over the kernels.
#include <cstdint>
#include <future>
#include <utility>

#include "capture/main_form.h"
#include "effects/kernels/bw.h"
#include "effects/kernels/circular.h"
#include "effects/kernels/colorize.h"
#include "effects/kernels/edge.h"
#include "effects/kernels/mirror.h"
#include "effects/kernels/negative.h"
#include "effects/kernels/sepia.h"
#include "effects/types/hdr.h"
#include "effects/types/mix.h"
#include "effects/types/out_focus.h"
#include "effects/types/qshrink.h"
#include "effects/types/tilt_shift.h"
#include "effects/types/vignet.h"

namespace Kivo {

using Osp::Base::ByteBuffer;

Effects::ConstPixels MainForm::View(const ByteBuffer& buffer) const {
    const auto [width, height] = setting_->GetCaptureDimension();
    return {buffer.GetPointer(), width, height};
}

Effects::Pixels MainForm::View(ByteBuffer& buffer) const {
    const auto [width, height] = setting_->GetCaptureDimension();
    return {buffer.GetPointer(), width, height};
}

Effects::EffectJob MainForm::MakeJob() {
    return {setting_->GetCameraType(),
            setting_->GetPhotoEffect(),
            !IsPrimary(),
            shotCounter_,
            View(std::as_const(accumulation_)),
            &effectTables_,
            &scratch_};
}

/// On a worker thread, while the camera focuses: the maps of the first photograph of a size take
/// longer to build than to apply. An effect that comes sooner waits for its map.
void MainForm::PrepareTables() {
    const auto [width, height] = setting_->GetCaptureDimension();
    tableBuilder_ = std::async(Effects::PrepareTables, MakeJob(), width, height);
}

bool MainForm::ApplyEffect(const ByteBuffer* source, ByteBuffer* destination) {
    if (Osp::Failed(destination->Construct(source->GetCapacity()))) return false;
    return Effects::ApplyEffect(MakeJob(), View(*source), View(*destination));
}

void MainForm::BW(const ByteBuffer* source, ByteBuffer* destination) {
    Effects::BW(View(*source), View(*destination));
}

void MainForm::Sepia(const ByteBuffer* source, ByteBuffer* destination) {
    Effects::Sepia(View(*source), View(*destination));
}

void MainForm::Negative(const ByteBuffer* source, ByteBuffer* destination) {
    Effects::Negative(View(*source), View(*destination));
}

void MainForm::Colorize(const ByteBuffer* source, ByteBuffer* destination, int hue, int saturation,
                        float opacity) {
    Effects::Colorize(View(*source), View(*destination), hue, saturation, opacity);
}

void MainForm::Edge(const ByteBuffer* source, ByteBuffer* destination) {
    Effects::Edge(View(*source), View(*destination), scratch_);
}

void MainForm::Circular(const ByteBuffer* source, ByteBuffer* destination, bool concave) {
    const auto [width, height] = setting_->GetCaptureDimension();
    Effects::Circular(View(*source), View(*destination),
                      *effectTables_.Circular(width, height, concave));
}

void MainForm::Vignet(const ByteBuffer* source, ByteBuffer* destination, bool wide) {
    const auto [width, height] = setting_->GetCaptureDimension();
    Effects::Vignet(View(*source), View(*destination), *effectTables_.Vignet(width, height, wide),
                    scratch_);
}

void MainForm::HDR(const ByteBuffer* source, ByteBuffer* destination) {
    Effects::HDR(View(*source), View(*destination), effectTables_.Levels(), scratch_);
}

void MainForm::Mix(const ByteBuffer* source, ByteBuffer* destination) {
    Effects::Mix(View(std::as_const(accumulation_)), View(*source), View(*destination));
}

void MainForm::Mirror(const ByteBuffer* source, ByteBuffer* destination, bool secondary) {
    Effects::Mirror(View(*source), View(*destination), secondary);
}

void MainForm::QShrink(const ByteBuffer* source, ByteBuffer* destination) {
    const auto [width, height] = setting_->GetCaptureDimension();
    Effects::QShrink(View(*source), {destination->GetPointer(), width / 2, height / 2});
}

void MainForm::TiltShift(const ByteBuffer* source, ByteBuffer* destination) {
    Effects::TiltShift(View(*source), View(*destination), effectTables_.Levels(), scratch_);
}

void MainForm::OutFocus(const ByteBuffer* source, ByteBuffer* destination) {
    Effects::OutFocus(View(*source), View(*destination), effectTables_.Levels(), scratch_);
}

}  // namespace Kivo
