#include "backends/web/answer_intake.h"

#include <array>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace Osp::Web {

namespace {

constexpr std::size_t kChunkBytes = std::size_t{2} << 20;
constexpr std::size_t kMostBytes = std::size_t{8} << 20;
constexpr const char* kFile = "/answer";
constexpr const char* kPartialSuffix = ".wkdownload";  // the engine's, while it writes

}  // namespace

AnswerIntake::AnswerIntake(WebKitDownload* download, TakeChunk take, End end)
    : download_(WEBKIT_DOWNLOAD(g_object_ref(download))),
      take_(std::move(take)),
      end_(std::move(end)) {
    g_signal_connect(download_, "decide-destination",
                     G_CALLBACK(+[](WebKitDownload*, char*, gpointer self) -> gboolean {
                         return static_cast<AnswerIntake*>(self)->ChooseFile();
                     }),
                     this);
    g_signal_connect(download_, "received-data",
                     G_CALLBACK(+[](WebKitDownload*, guint64, gpointer self) {
                         (void)static_cast<AnswerIntake*>(self)->Read();
                     }),
                     this);
    g_signal_connect(download_, "failed",
                     G_CALLBACK(+[](WebKitDownload*, GError* error, gpointer self) {
                         static_cast<AnswerIntake*>(self)->Finish(error->message);
                     }),
                     this);
    g_signal_connect(download_, "finished", G_CALLBACK(+[](WebKitDownload*, gpointer self) {
                         static_cast<AnswerIntake*>(self)->TakeRest();
                     }),
                     this);
}

AnswerIntake::~AnswerIntake() {
    g_signal_handlers_disconnect_by_data(download_, this);
    if (end_) webkit_download_cancel(download_);
    g_object_unref(download_);
    if (file_ >= 0) close(file_);
}

bool AnswerIntake::ChooseFile() {
    if (folder_.Path().empty()) {
        webkit_download_cancel(download_);
    } else {
        webkit_download_set_destination(download_, (folder_.Path() + kFile).c_str());
    }
    return true;
}

void AnswerIntake::OpenFile() {
    const std::string path = folder_.Path() + kFile;
    file_ = open((path + kPartialSuffix).c_str(), O_RDONLY | O_CLOEXEC);
    if (file_ < 0) file_ = open(path.c_str(), O_RDONLY | O_CLOEXEC);
}

bool AnswerIntake::Read() {
    if (file_ < 0) OpenFile();
    std::array<unsigned char, 65536> buffer;
    for (;;) {
        const ssize_t count = file_ < 0 ? 0 : read(file_, buffer.data(), buffer.size());
        if (count <= 0) return true;
        taken_ += static_cast<std::size_t>(count);
        chunk_.insert(chunk_.end(), buffer.begin(), buffer.begin() + count);
        if (taken_ > kMostBytes) {
            webkit_download_cancel(download_);
            Finish("The answer is too long");
            return false;
        }
        if (chunk_.size() < kChunkBytes) continue;
        Bytes rest(chunk_.begin() + kChunkBytes, chunk_.end());
        chunk_.resize(kChunkBytes);
        take_(std::exchange(chunk_, std::move(rest)));
    }
}

void AnswerIntake::TakeRest() {
    if (!Read()) return;
    if (!chunk_.empty()) take_(std::move(chunk_));
    Finish("");
}

void AnswerIntake::Finish(const std::string& whyNot) {
    if (end_) std::exchange(end_, nullptr)(whyNot);
}

}  // namespace Osp::Web
