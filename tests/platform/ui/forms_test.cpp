#include <memory>

#include <osp/base/collection/array_list.h>
#include <osp/ui/weak_control.h>

#include "tests/support/ui_fixture.h"

namespace Osp::Ui {
namespace {

using Log = std::vector<std::string>;

class NotingForm : public Controls::Form {
  public:
    NotingForm(Log& log, std::string name, result onInitializing = result::kSuccess)
        : log_(log), formName_(std::move(name)), onInitializing_(onInitializing) {
        EXPECT_EQ(Construct(0), result::kSuccess);
    }
    ~NotingForm() override { log_.push_back("deleted " + formName_); }
    result OnInitializing() override {
        log_.push_back("initialized " + formName_);
        return onInitializing_;
    }
    result OnTerminating() override {
        log_.push_back("terminated " + formName_);
        return result::kSuccess;
    }
    bool OnUserEventReceivedN(long requestId, Base::Collection::IList* args) override {
        const std::unique_ptr<Base::Collection::IList> owned(args);
        log_.push_back(formName_ + " got " + std::to_string(requestId));
        if (removedFrom != nullptr) {
            (void)removedFrom->RemoveControl(*this);
            log_.push_back("still in the call");
        }
        return true;
    }
    Controls::Frame* removedFrom = nullptr;

  private:
    Log& log_;
    std::string formName_;
    result onInitializing_;
};

class FormsTest : public UiTest {
  protected:
    NotingForm& AddForm(const char* name) {
        auto* const form = new NotingForm(log_, name);
        EXPECT_EQ(frame_.AddControl(form), result::kSuccess);
        return *form;
    }
};

TEST_F(FormsTest, AFormMayRemoveItselfAndGoesOnceItsCallHasUnwound) {
    NotingForm& form = AddForm("a");
    form.removedFrom = &frame_;
    (void)form.SendUserEvent(100, nullptr);
    (void)form.SendUserEvent(101, nullptr);
    EXPECT_EQ(log_, Log{"initialized a"}) << "user events are queued";
    loop_.Settle();
    EXPECT_EQ(log_,
              (Log{"initialized a", "a got 100", "terminated a", "still in the call", "deleted a"}))
        << "and one to a form that is gone is dropped";
}

TEST_F(FormsTest, AWeakHandleKnowsWhenItsFormHasEnded) {
    NotingForm& form = AddForm("a");
    const WeakControl<NotingForm> handle(form);
    EXPECT_EQ(handle.Get(), &form);
    EXPECT_EQ(WeakControl<NotingForm>().Get(), nullptr);
    (void)frame_.RemoveControl(form);
    loop_.Settle();
    EXPECT_EQ(handle.Get(), nullptr);
}

TEST_F(FormsTest, AFailingFormStaysItsCallers) {
    const auto form = std::make_unique<NotingForm>(log_, "a", result::kStorageFull);
    EXPECT_EQ(frame_.AddControl(form.get()), result::kStorageFull);
    EXPECT_EQ(form->GetParent(), nullptr);
    EXPECT_EQ(log_, Log{"initialized a"});
}

TEST_F(FormsTest, VisibleMeansCurrentAndInTheForeground) {
    auto* const area = AddArea({0, 0, 10, 10});
    NotingForm& other = AddForm("other");
    EXPECT_TRUE(area->IsVisible());
    EXPECT_FALSE(other.IsVisible());
    screen_.SetForeground(false);
    EXPECT_FALSE(form_->IsVisible());
    screen_.SetForeground(true);
    ASSERT_EQ(frame_.SetCurrentForm(&other), result::kSuccess);
    EXPECT_FALSE(area->IsVisible());
    EXPECT_TRUE(other.IsVisible());
}

struct Counted : Base::Object {
    explicit Counted(int& ownAlive) : alive(ownAlive) { ++alive; }
    ~Counted() override { --alive; }
    int& alive;
};

TEST_F(FormsTest, ArgumentsOfEventsThatNobodyReceivesAreDeleted) {
    int alive = 0;
    NotingForm& form = AddForm("a");
    auto* const arguments = new Base::Collection::ArrayList;
    ASSERT_EQ(arguments->Construct(1), result::kSuccess);
    ASSERT_EQ(arguments->Add(new Counted(alive)), result::kSuccess);
    (void)form.SendUserEvent(100, arguments);
    (void)frame_.RemoveControl(form);
    EXPECT_EQ(alive, 1);
    loop_.Settle();
    EXPECT_EQ(alive, 0);
}

TEST_F(FormsTest, RemainingFormsEndInReverseOrder) {
    {
        Controls::Frame frame = Access::MakeFrame();
        ASSERT_EQ(frame.AddControl(new NotingForm(log_, "a")), result::kSuccess);
        ASSERT_EQ(frame.AddControl(new NotingForm(log_, "b")), result::kSuccess);
        log_.clear();
    }
    loop_.Settle();
    EXPECT_EQ(log_, (Log{"terminated b", "deleted b", "terminated a", "deleted a"}));
}

}  // namespace
}  // namespace Osp::Ui
