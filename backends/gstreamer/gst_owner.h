// Ownership of what GStreamer counts references of.
#pragma once

#include <gst/gst.h>
#include <memory>

#include "osp/base/owner.h"

namespace Osp::Media {

template <class T>
using GstOwner = Base::Owner<T, gst_object_unref>;

/// Of the objects that have functions of their own in headers, which no template may name.
struct MiniObjectUnref {
    template <class T>
    void operator()(T* object) const {
        gst_mini_object_unref(GST_MINI_OBJECT_CAST(object));
    }
};
using CapsOwner = std::unique_ptr<GstCaps, MiniObjectUnref>;
using SampleOwner = std::unique_ptr<GstSample, MiniObjectUnref>;

/// A reference of our own to what somebody else owns, or to what nobody has taken yet.
template <class T>
GstOwner<T> Own(T* object) {
    return GstOwner<T>(object == nullptr ? nullptr : static_cast<T*>(gst_object_ref_sink(object)));
}

}  // namespace Osp::Media
