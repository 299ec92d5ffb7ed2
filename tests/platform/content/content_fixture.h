// A phone's storage with its content store, and two files in it.
#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>

#include <osp/content/content_manager.h>
#include <osp/content/image_content_info.h>

#include "osp/content/content_store.h"
#include "osp/io/storage_map.h"
#include "tests/support/product.h"
#include "tests/support/temporary_folder.h"

namespace Osp::Content {

/// Files of these tests tell their own description after "EXIF:" and are 40 x 30 then.
inline std::optional<EmbeddedInfo> ReadEmbedded(const std::string& realPath) {
    const std::string content = Testing::ReadText(realPath);
    if (!content.starts_with("EXIF:")) return std::nullopt;
    return EmbeddedInfo{.description = content.substr(5), .width = 40, .height = 30};
}

/// A phone's storage under `data` with its content store, from start to clean end.
struct PhoneRun {
    explicit PhoneRun(const std::string& data)
        : storage(Testing::StorageIn(data)),
          prepared(storage.Prepare()),
          store(storage, ReadEmbedded) {
        EXPECT_EQ(manager.Construct(), result::kSuccess);
    }

    result Create(ImageContentInfo& info, const char* path, const char* description = "") {
        const result r = info.Construct(path, "", false);
        if (Failed(r)) return r;
        info.SetDescription(description);
        return manager.CreateContent(info);
    }
    /// The registered description of the file at `path`.
    std::string Describe(const char* path, const char* description = "") {
        ImageContentInfo info;
        EXPECT_EQ(Create(info, path, description), result::kSuccess) << path;
        return info.GetDescription().ToUtf8();
    }

    Io::StorageMap storage;
    Service<Io::StorageMap>::Installed installedStorage{storage};
    result prepared;
    ContentStore store;
    Service<ContentStore>::Installed installedStore{store};
    ContentManager manager;
};

inline constexpr const char* kFirst = "/Media/Images/KIVO0000.jpg";
inline constexpr const char* kSecond = "/Media/Images/KIVO0001.jpg";

class ContentTest : public testing::Test {
  protected:
    ContentTest() {
        std::filesystem::create_directories(folder_ / "Media/Images");
        Write(kFirst, "EXIF:own");
        Write(kSecond, "plain");
    }
    void Write(const char* path, const std::string& content) {
        Testing::WriteText(folder_.Path() + path, content);
    }

    Testing::TemporaryFolder folder_;
    std::string database_ = folder_ / "test-camera/contents.db";
};

}  // namespace Osp::Content
