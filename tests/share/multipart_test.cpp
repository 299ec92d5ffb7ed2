// Bodies of uploads, read back by a parser that knows nothing of how they are made.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <map>

#include "osp/io/storage_map.h"
#include "share/upload/multipart_form.h"
#include "tests/share/multipart_parser.h"
#include "tests/support/temporary_folder.h"

namespace Kivo {
namespace {

constexpr const char* kBoundary = "---------------------------7da338270ba0";
constexpr const char* kPath = "/Media/Images/KIVO0001.jpg";
constexpr unsigned long kUnknown = std::numeric_limits<unsigned long>::max();

std::string Taken(Osp::Base::ByteBuffer* bytes) {
    const std::unique_ptr<Osp::Base::ByteBuffer> owned(bytes);
    return {owned->Remaining().begin(), owned->Remaining().end()};
}

TEST(MultipartForm, OneFieldIsWrittenAsLaidDown) {
    MultipartForm form;
    EXPECT_EQ(form.Construct(""), result::kInvalidArgument);
    EXPECT_EQ(form.AddFormData("k", "v"), result::kInvalidArgument);
    ASSERT_EQ(form.Construct("B"), result::kSuccess);
    EXPECT_EQ(form.Construct("B"), result::kMapConstruction);
    ASSERT_EQ(form.AddFormData("k", "v"), result::kSuccess);
    EXPECT_EQ(form.AddFormData("", "v"), result::kInvalidArgument);
    EXPECT_EQ(form.AddFormData("k", "other"), result::kInvalidArgument);
    EXPECT_EQ(Taken(form.GetFormsN()),
              "--B\r\nContent-Disposition: form-data; name=\"k\"\r\n\r\nv\r\n");
    EXPECT_EQ(Taken(form.GetLastBoundaryN()), "\r\n--B--\r\n");
    EXPECT_EQ(form.GetContentType().ToUtf8(), "multipart/form-data; boundary=B");
    EXPECT_EQ(form.GetSize(), kUnknown);
    for (const char* path : {"", "/a"}) {
        EXPECT_EQ(form.SetFile("", "", path), result::kInvalidArgument);
    }
}

class UploadBodyTest : public testing::Test {
  protected:
    UploadBodyTest() { std::filesystem::create_directories(images_); }

    Osp::Testing::TemporaryFolder folder_;
    const std::filesystem::path images_ = std::filesystem::path(folder_.Path()) / "Media/Images";
    Osp::Io::StorageMap storage_{
        {.product = {"test", "test", "test"}, .dataFolder = folder_.Path(), .resourceFolder = ""}};
    Osp::Io::StorageMap::Installed installed_{storage_};
};

TEST_F(UploadBodyTest, ReadsBackWithItsSize) {
    std::string photo(5000, '\0');
    for (std::size_t i = 0; i < photo.size(); ++i) photo[i] = static_cast<char>(i * 7);
    photo += "\r\n--not the boundary";
    std::ofstream(images_ / "KIVO0001.jpg") << photo;
    MultipartForm form;
    ASSERT_EQ(form.Construct(kBoundary), result::kSuccess);
    const std::map<std::string, std::string> fields{
        {"message", "Gr\u00fc\u00dfe\n\u20ac #KIVO"}, {"empty", ""}, {"source", "@"}};
    for (const auto& [name, value] : fields) {
        ASSERT_EQ(form.AddFormData(name.c_str(), value.c_str()), result::kSuccess);
    }
    ASSERT_EQ(form.SetFile("media", "application/octet-stream", kPath), result::kSuccess);
    const std::string last = Taken(form.GetLastBoundaryN());
    EXPECT_EQ(last.size(), 47U);
    const std::string body = Taken(form.GetFormsN()) + photo + last;
    EXPECT_EQ(form.GetSize(), body.size());
    const auto parts = Testing::ParseMultipart(body, kBoundary);
    ASSERT_TRUE(parts) << body;
    EXPECT_EQ(parts->fields, fields);
    EXPECT_EQ(parts->file.content, photo);
    EXPECT_EQ(parts->file.header, "form-data; name=\"media\"; filename=\"" + std::string(kPath) +
                                      "\"\r\nContent-Type: application/octet-stream");
    std::filesystem::remove(images_ / "KIVO0001.jpg");
    EXPECT_EQ(form.GetSize(), kUnknown);
}

}  // namespace
}  // namespace Kivo
