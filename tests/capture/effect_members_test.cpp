// The camera form's effect operations, each held against the function that it wraps. The program
// composes its photographs without most of them.
#include <algorithm>
#include <chrono>
#include <functional>
#include <gtest/gtest.h>

#include "app/model/camera_setting.h"
#include "capture/main_form.h"
#include "effects/dispatch.h"
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
#include "host/machine.h"
#include "host/modules/application_library.h"
#include "osp/app/lifecycle.h"
#include "osp/ui/screen.h"
#include "tests/support/pictures/pictures.h"
#include "tests/support/temporary_folder.h"

extern "C" int OspMain(int argc, char** argv);

namespace Kivo {
namespace {

using Osp::Base::ByteBuffer;

constexpr int kWidth = 64;
constexpr int kHeight = 48;
constexpr auto kStarted = std::chrono::milliseconds(300);

/// Runs `check` with the camera form of a running camera, which is linked to this program.
void WithMainForm(const std::function<void(MainForm&)>& check) {
    const Osp::Testing::TemporaryFolder folder;
    Host::Options options;
    options.isHeadless = true;
    options.clock = Host::ClockKind::kReal;
    options.dataFolder = folder.Path();
    options.primary = options.secondary = "scene";
    auto made = Host::Machine::Make(options, Host::PackageFolder() + "/share/kivo-camera/Res");
    ASSERT_TRUE(made) << made.Why().message;
    Host::Machine& machine = **made;
    bool hasChecked = false;
    machine.GetLoop().StartTimer(Osp::Base::EventClass::kApplication, kStarted, [&] {
        check(*static_cast<MainForm*>(Osp::Ui::Screen::Current().GetCurrentForm()));
        hasChecked = true;
        Osp::App::Lifecycle::Current().Terminate(false);
    });
    EXPECT_EQ(machine.Run(OspMain), 0);
    EXPECT_TRUE(hasChecked);
}

void Fill(ByteBuffer& buffer, const Picture& picture) {
    ASSERT_EQ(buffer.Construct(static_cast<int>(picture.bytes.size())), result::kSuccess);
    std::ranges::copy(picture.bytes, buffer.GetPointer());
}

Picture Copy(const ByteBuffer& buffer, int width = kWidth, int height = kHeight) {
    Picture picture(width, height);
    std::ranges::copy(buffer.Bytes(), picture.bytes.begin());
    return picture;
}

class Members {
  public:
    explicit Members(MainForm& form) : form_(form) {
        form.GetSetting()->SetCaptureDimension(kWidth, kHeight);
        Fill(source_, picture_);
    }

    /// That `method` with `more` arguments makes the pixels of `function`, in a picture whose sides
    /// are so many times shorter.
    template <int kDivisor = 1, class Method, class Function, class... More>
    void Expect(const char* name, Method method, Function function, More... more) {
        ByteBuffer made;
        Picture expected(kWidth / kDivisor, kHeight / kDivisor);
        ASSERT_EQ(made.Construct(static_cast<int>(expected.bytes.size())), result::kSuccess);
        (form_.*method)(&source_, &made, more...);
        function(picture_.View(), expected.View());
        ExpectSame(Copy(made, expected.width, expected.height), expected, name);
    }

    void ExpectKernels() {
        using namespace Effects;
        const GaussianLevels& levels = tables_.Levels();
        Expect("BW", &MainForm::BW, [](auto s, auto d) { BW(s, d); });
        Expect("Sepia", &MainForm::Sepia, [](auto s, auto d) { Sepia(s, d); });
        Expect("Negative", &MainForm::Negative, [](auto s, auto d) { Negative(s, d); });
        Expect(
            "Colorize", &MainForm::Colorize, [](auto s, auto d) { Colorize(s, d, 121, 62, 0.25F); },
            121, 62, 0.25F);
        Expect("Edge", &MainForm::Edge, [&](auto s, auto d) { Edge(s, d, scratch_); });
        Expect("HDR", &MainForm::HDR, [&](auto s, auto d) { HDR(s, d, levels, scratch_); });
        Expect("TiltShift", &MainForm::TiltShift,
               [&](auto s, auto d) { TiltShift(s, d, levels, scratch_); });
        Expect("OutFocus", &MainForm::OutFocus,
               [&](auto s, auto d) { OutFocus(s, d, levels, scratch_); });
        Expect<2>("QShrink", &MainForm::QShrink, [](auto s, auto d) { QShrink(s, d); });
        for (const bool flag : {false, true}) {
            const auto circular = tables_.Circular(kWidth, kHeight, flag);
            const auto vignet = tables_.Vignet(kWidth, kHeight, flag);
            Expect(
                "Circular", &MainForm::Circular, [&](auto s, auto d) { Circular(s, d, *circular); },
                flag);
            Expect(
                "Vignet", &MainForm::Vignet,
                [&](auto s, auto d) { Vignet(s, d, *vignet, scratch_); }, flag);
            Expect(
                "Mirror", &MainForm::Mirror, [&](auto s, auto d) { Mirror(s, d, flag); }, flag);
        }
    }

    /// `job` has what the form has: counter and first frame.
    void ExpectEveryEffect(CameraType type, Effects::EffectJob job) {
        form_.GetSetting()->SetCameraType(job.type = type);
        job.tables = &tables_;
        job.scratch = &scratch_;
        for (int effect = 0; effect <= static_cast<int>(PhotoEffect::kMirror) + 1; ++effect) {
            SCOPED_TRACE(std::string(NameOf(type)) + " " + std::to_string(effect));
            job.effect = static_cast<PhotoEffect>(effect);
            form_.GetSetting()->SetPhotoEffect(job.effect);
            ByteBuffer made;
            Picture expected(kWidth, kHeight);
            const bool hasChanged = form_.ApplyEffect(&source_, &made);
            EXPECT_EQ(hasChanged, Effects::ApplyEffect(job, picture_.View(), expected.View()));
            ExpectSame(Copy(made), expected, "ApplyEffect");
        }
    }

    void ExpectMix() {
        const Picture first = RandomPicture(kWidth, kHeight, Look::kGradient, 2);
        ByteBuffer frame;
        Fill(frame, first);
        form_.GetSetting()->SetCameraType(CameraType::kMix);
        ASSERT_EQ(form_.SaveToCache(frame), result::kSuccess);
        Expect("Mix", &MainForm::Mix, [&](auto s, auto d) { Effects::Mix(first.View(), s, d); });
        ExpectEveryEffect(CameraType::kMix, {.shotCounter = 1, .firstFrame = first.View()});
    }

  private:
    MainForm& form_;
    Effects::EffectTables tables_;
    Effects::Scratch scratch_;
    const Picture picture_ = RandomPicture(kWidth, kHeight, Look::kNoise, 1);
    ByteBuffer source_;
};

TEST(EffectMembers, MakeThePixelsOfTheFunctionsThatTheyWrap) {
    WithMainForm([](MainForm& form) {
        Members members(form);
        members.ExpectKernels();
        for (std::size_t type = 0; type < kCameraTypeNames.size(); ++type) {
            members.ExpectEveryEffect(static_cast<CameraType>(type), {});
        }
        members.ExpectMix();
    });
}

}  // namespace
}  // namespace Kivo
