#include "backends/web/snapshot.h"

#include <utility>

namespace Osp::Web {

namespace {

constexpr guint kLimitMs = 5000;

struct Asked {
    Graphics::Dimension size;
    std::function<void(std::shared_ptr<Graphics::Surface>)> taken;
    Base::Owner<GCancellable, g_object_unref> cancellable{g_cancellable_new()};
    guint limit = 0;
};

std::shared_ptr<Graphics::Surface> Scaled(GdkTexture* texture, Graphics::Dimension size) {
    using Graphics::Surface;
    const Graphics::Dimension own{gdk_texture_get_width(texture), gdk_texture_get_height(texture)};
    Surface whole(own, Surface::Kind::kWithAlpha);
    gdk_texture_download(texture, whole.Data(), static_cast<gsize>(whole.StrideBytes()));
    whole.MarkDirty();
    auto scaled = std::make_shared<Surface>(size, Surface::Kind::kWithAlpha);
    const Graphics::CairoPointer context(cairo_create(scaled->Cairo()));
    cairo_scale(context.get(), double{1} * size.width / own.width,
                double{1} * size.height / own.height);
    cairo_set_source_surface(context.get(), whole.Cairo(), 0, 0);
    cairo_paint(context.get());
    return scaled;
}

void OnTaken(GObject* view, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Asked> asked(static_cast<Asked*>(data));
    if (asked->limit != 0) g_source_remove(asked->limit);
    const Base::Owner<GdkTexture, g_object_unref> texture(
        webkit_web_view_get_snapshot_finish(WEBKIT_WEB_VIEW(view), result, nullptr));
    asked->taken(texture ? Scaled(texture.get(), asked->size) : nullptr);
}

}  // namespace

void TakeSnapshot(WebKitWebView* view, Graphics::Dimension size,
                  std::function<void(std::shared_ptr<Graphics::Surface>)> taken) {
    auto asked = std::make_unique<Asked>();
    asked->size = size;
    asked->taken = std::move(taken);
    Asked* const data = asked.release();
    data->limit = g_timeout_add_once(
        kLimitMs,
        [](gpointer late) {
            static_cast<Asked*>(late)->limit = 0;
            g_cancellable_cancel(static_cast<Asked*>(late)->cancellable.get());
        },
        data);
    webkit_web_view_get_snapshot(view, WEBKIT_SNAPSHOT_REGION_VISIBLE, WEBKIT_SNAPSHOT_OPTIONS_NONE,
                                 data->cancellable.get(), OnTaken, data);
}

}  // namespace Osp::Web
