#include "script_file.h"

#include <fstream>
#include <glib-unix.h>
#include <glib.h>

namespace Host {

namespace {

/// Lines from standard input, read on the loop so that a script can answer what was printed.
class ScriptInput : public ScriptFile {
  public:
    explicit ScriptInput(ScriptQueue& queue) : queue_(queue), channel_(g_io_channel_unix_new(0)) {
        g_io_channel_set_encoding(channel_, nullptr, nullptr);
        watch_ = g_io_add_watch(channel_, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR),
                                &ScriptInput::OnReadable, this);
    }
    ~ScriptInput() override {
        if (watch_ != 0) g_source_remove(watch_);
        g_io_channel_unref(channel_);
    }

  private:
    static gboolean OnReadable(GIOChannel*, GIOCondition, gpointer data) {
        return static_cast<ScriptInput*>(data)->ReadLines() ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
    }

    bool ReadLines() {
        do {
            gchar* text = nullptr;
            gsize end = 0;
            const GIOStatus status =
                g_io_channel_read_line(channel_, &text, nullptr, &end, nullptr);
            if (status == G_IO_STATUS_AGAIN) return true;
            if (status != G_IO_STATUS_NORMAL) {
                watch_ = 0;
                queue_.Close();
                return false;
            }
            queue_.Add({std::string(text, end), ++number_, nullptr});
            g_free(text);
        } while (g_io_channel_get_buffer_condition(channel_) & G_IO_IN);
        return true;
    }

    ScriptQueue& queue_;
    GIOChannel* channel_;
    guint watch_ = 0;
    int number_ = 0;
};

}  // namespace

std::unique_ptr<ScriptFile> OpenScript(const std::string& path, ScriptQueue& queue,
                                       std::string& error) {
    if (path == "-") return std::make_unique<ScriptInput>(queue);
    std::ifstream file(path);
    if (!file) {
        error = "cannot read the script " + path;
        return nullptr;
    }
    int number = 0;
    for (std::string line; std::getline(file, line);) queue.Add({line, ++number, nullptr});
    queue.Close();
    return std::make_unique<ScriptFile>();
}

}  // namespace Host
