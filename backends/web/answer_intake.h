// An answer that is handed over in chunks instead of being shown.
#pragma once

#include <functional>
#include <string>
#include <webkit/webkit.h>

#include "backends/web/private_folder.h"
#include "osp/web/web_engine.h"

namespace Osp::Web {

/// The engine writes a download to a file and nowhere else, so the file is read as it grows.
class AnswerIntake {
  public:
    using TakeChunk = std::function<void(Bytes chunk)>;
    /// Empty when all has been taken.
    using End = std::function<void(const std::string& whyNot)>;

    /// Both are called from the loop, never again after `end`, in which the intake may be deleted.
    AnswerIntake(WebKitDownload* download, TakeChunk take, End end);
    /// Gives up what is still to come.
    ~AnswerIntake();
    AnswerIntake(const AnswerIntake&) = delete;
    AnswerIntake& operator=(const AnswerIntake&) = delete;

  private:
    bool ChooseFile();
    void OpenFile();
    /// What is there. False when that was too much, and the intake may be gone.
    bool Read();
    void TakeRest();
    void Finish(const std::string& whyNot);

    WebKitDownload* download_;
    TakeChunk take_;
    End end_;
    PrivateFolder folder_;
    int file_ = -1;
    Bytes chunk_;
    std::size_t taken_ = 0;  // bytes of the whole answer
};

}  // namespace Osp::Web
