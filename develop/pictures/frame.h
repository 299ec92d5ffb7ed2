// One picture of a photograph, while it is being decoded.
#pragma once

#include <atomic>
#include <string>
#include <thread>

#include <osp/base/result.h>
#include <osp/graphics/dimension.h>

#include "develop/pictures/picture_format.h"
#include "develop/problem.h"
#include "effects/pixels/pixels.h"
#include "osp/base/values/block_pool.h"

namespace Kivo::Tools {

class Frame {
  public:
    /// Decodes a file's bytes and turns the picture upright, all in the calling thread or, with
    /// `inBackground`, in another one, which reads the bytes until it has ended. Problems that show
    /// after the header are told by WaitForMore.
    Problem Load(Bytes file, bool inBackground);
    /// Waits for the other thread to end.
    void Stop() { decoder_ = {}; }

    Osp::Graphics::Dimension Size() const { return size_; }
    /// Rows that are not there yet are unspecified.
    Effects::ConstPixels View() const { return {pixels_.data(), size_.width, size_.height}; }

    /// Returns how many rows are there, once that is more than `rows`; kDamaged when the picture is
    /// damaged or cut off.
    int WaitForMore(int rows) const;
    /// Returns whether all rows are there.
    bool WaitForAll() const;
    static constexpr int kDamaged = -1;

    /// Why the picture is damaged, once it is known to be.
    result Failure() const { return failure_; }
    /// What is wrong with the file although all rows are there, once they are; in words, or empty.
    const std::string& Oddity() const { return oddity_; }

  private:
    bool DecodeInBackground(Bytes file);
    void Decode(Bytes file);
    result DecodeTurned(Bytes file);
    void Announce(int rows);

    Osp::Graphics::Dimension size_;
    int orientation_ = 1;  // in the file
    Osp::Base::Block pixels_;
    Osp::Base::Block stored_;  // as in the file, where that is not upright
    result failure_ = result::kSuccess;
    std::string oddity_;
    std::atomic<int> rowsDone_ = 0;  // tells when the two above may be read
    std::jthread decoder_;           // last: it uses everything else
};

}  // namespace Kivo::Tools
