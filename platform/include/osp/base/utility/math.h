// Numbers by chance.
#pragma once

namespace Osp::Base::Utility {

/// Loop thread only.
class Math {
  public:
    /// From 0 to 2,147,483,647, each as likely. In a run under a virtual clock always the same
    /// sequence.
    static int Rand();
};

}  // namespace Osp::Base::Utility
