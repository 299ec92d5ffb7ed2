// The root of everything that a collection or an event can carry.
#pragma once

namespace Osp::Base {

class Object {
  public:
    virtual ~Object() = default;
};

}  // namespace Osp::Base
