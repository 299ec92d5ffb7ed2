// A picture file as the content database describes it.
#pragma once

#include <osp/content/content_info.h>

namespace Osp::Content {

class ImageContentInfo : public ContentInfo {
  public:
    /// In pixels; 0 until the content has been created, and for files that do not tell.
    int GetWidth() const { return width_; }
    int GetHeight() const { return height_; }

  protected:
    void Adopt(const ContentRecord& record) override;

  private:
    int width_ = 0;
    int height_ = 0;
};

}  // namespace Osp::Content
