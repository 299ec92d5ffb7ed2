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
#include "effects/kernels/hdr.h"
#include "effects/kernels/mirror.h"
#include "effects/kernels/mix.h"
#include "effects/kernels/negative.h"
#include "effects/kernels/out_focus.h"
#include "effects/kernels/qshrink.h"
#include "effects/kernels/sepia.h"
#include "effects/kernels/tilt_shift.h"
#include "effects/kernels/vignet.h"
#include "host/application_library.h"
#include "host/machine.h"
#include "osp/app/lifecycle.h"
#include "osp/ui/screen.h"
#include "tests/support/pictures.h"
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

    using Member = std::function<void(const ByteBuffer*, ByteBuffer*)>;
    using Function = std::function<void(Effects::ConstPixels, Effects::Pixels)>;

    void Expect(const char* name, const Member& member, const Function& function,
                int divisor = 1) const {
        ByteBuffer made;
        Picture expected(kWidth / divisor, kHeight / divisor);
        ASSERT_EQ(made.Construct(static_cast<int>(expected.bytes.size())), result::kSuccess);
        member(&source_, &made);
        function(picture_.View(), expected.View());
        ExpectSame(Copy(made, expected.width, expected.height), expected, name);
    }

    void ExpectKernels() {
        using In = const ByteBuffer*;
        using Out = ByteBuffer*;
        MainForm& f = form_;
        Expect(
            "BW", [&](In s, Out d) { f.BW(s, d); }, [](auto s, auto d) { Effects::BW(s, d); });
        Expect(
            "Sepia", [&](In s, Out d) { f.Sepia(s, d); },
            [](auto s, auto d) { Effects::Sepia(s, d); });
        Expect(
            "Negative", [&](In s, Out d) { f.Negative(s, d); },
            [](auto s, auto d) { Effects::Negative(s, d); });
        Expect(
            "Colorize", [&](In s, Out d) { f.Colorize(s, d, 121, 62, 0.25F); },
            [](auto s, auto d) { Effects::Colorize(s, d, 121, 62, 0.25F); });
        Expect(
            "Edge", [&](In s, Out d) { f.Edge(s, d); },
            [&](auto s, auto d) { Effects::Edge(s, d, scratch_); });
        Expect(
            "HDR", [&](In s, Out d) { f.HDR(s, d); },
            [&](auto s, auto d) { Effects::HDR(s, d, tables_.Levels(), scratch_); });
        Expect(
            "TiltShift", [&](In s, Out d) { f.TiltShift(s, d); },
            [&](auto s, auto d) { Effects::TiltShift(s, d, tables_.Levels(), scratch_); });
        Expect(
            "OutFocus", [&](In s, Out d) { f.OutFocus(s, d); },
            [&](auto s, auto d) { Effects::OutFocus(s, d, tables_.Levels(), scratch_); });
        Expect(
            "QShrink", [&](In s, Out d) { f.QShrink(s, d); },
            [](auto s, auto d) { Effects::QShrink(s, d); }, 2);
        for (const bool flag : {false, true}) {
            Expect(
                "Circular", [&](In s, Out d) { f.Circular(s, d, flag); },
                [&](auto s, auto d) {
                    Effects::Circular(s, d, *tables_.Circular(kWidth, kHeight, flag));
                });
            Expect(
                "Vignet", [&](In s, Out d) { f.Vignet(s, d, flag); },
                [&](auto s, auto d) {
                    Effects::Vignet(s, d, *tables_.Vignet(kWidth, kHeight, flag), scratch_);
                });
            Expect(
                "Mirror", [&](In s, Out d) { f.Mirror(s, d, flag); },
                [&](auto s, auto d) { Effects::Mirror(s, d, flag); });
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
        Expect(
            "Mix", [&](const ByteBuffer* s, ByteBuffer* d) { form_.Mix(s, d); },
            [&](auto s, auto d) { Effects::Mix(first.View(), s, d); });
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
