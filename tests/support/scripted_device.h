// A camera device that does what the test says, and checks how it is treated.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "osp/media/camera/camera_device.h"

namespace Osp::Media {

class ScriptedDevice : public CameraDevice {
  public:
    explicit ScriptedDevice(std::string name) : id_(std::move(name)) {}

    const std::string& Id() const override { return id_; }
    std::span<const Graphics::Dimension> PreviewSizes() const override { return kSizes; }
    result Open(CameraDeviceClient& user) override {
        EXPECT_EQ(client, nullptr) << id_ << " opened twice";
        if (Succeeded(openResult)) client = &user;
        return openResult;
    }
    void Close() override {
        EXPECT_FALSE(isRunning) << id_ << " closed while running";
        client = nullptr;
    }
    result Start(const StreamSettings& started) override {
        EXPECT_NE(client, nullptr) << id_ << " started while closed";
        EXPECT_FALSE(isRunning) << id_ << " started twice";
        isRunning = Succeeded(startResult);
        settings = started;
        ++startCount;
        return startResult;
    }
    void Change(const StreamSettings& changed) override {
        EXPECT_TRUE(isRunning);
        settings = changed;
    }
    void Stop() override {
        EXPECT_TRUE(isRunning) << id_ << " stopped twice";
        isRunning = false;
    }
    result StartAutoFocus() override { return focusResult; }
    result RequestStill() override {
        EXPECT_TRUE(isRunning);
        ++stillCount;
        return stillResult;
    }
    bool HasWhiteBalance() const override { return hasWhiteBalance; }
    result SwitchFlashOn() override { return flashResult; }
    void SwitchFlashOff() override {}

    /// As a device does that ends by itself.
    void Fail(result r) {
        isRunning = false;
        client->OnFailed(r);
    }

    CameraDeviceClient* client = nullptr;  // not owned; null while closed
    bool isRunning = false;
    StreamSettings settings;
    int startCount = 0;
    int stillCount = 0;
    result openResult = result::kSuccess;
    result startResult = result::kSuccess;
    result focusResult = result::kSuccess;
    result stillResult = result::kSuccess;
    result flashResult = result::kSuccess;
    bool hasWhiteBalance = true;

  private:
    static constexpr Graphics::Dimension kSizes[] = {{640, 480}, {800, 480}};
    std::string id_;
};

}  // namespace Osp::Media
