#include "host/script/script_file.h"

#include <array>
#include <cerrno>
#include <fstream>
#include <glib-unix.h>
#include <string_view>
#include <unistd.h>
#include <utility>

#include "host/script/script_commands.h"

namespace Host {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
// Of a line that is too long, as much is kept as shows that it is.
constexpr std::size_t kKeptBytes = kByteOrderMark.size() + kLongestLineBytes + 1;

using Block = std::array<char, 4096>;

/// Cuts what is read into the lines of a queue.
class LineCutter {
  public:
    explicit LineCutter(ScriptQueue& queue) : queue_(queue) {}

    void Add(std::string_view bytes) {
        for (std::size_t end = 0; (end = bytes.find('\n')) != std::string_view::npos;) {
            Append(bytes.substr(0, end));
            bytes.remove_prefix(end + 1);
            EndLine();
        }
        Append(bytes);
    }
    /// No more will come; the last line needs no line feed.
    void End() {
        if (!line_.empty()) EndLine();
        queue_.Close();
    }

  private:
    void Append(std::string_view part) { line_ += part.substr(0, kKeptBytes - line_.size()); }
    void EndLine() {
        if (number_ == 0 && line_.starts_with(kByteOrderMark)) {
            line_.erase(0, kByteOrderMark.size());
        }
        queue_.Add({std::exchange(line_, {}), ++number_, nullptr});
    }

    ScriptQueue& queue_;
    std::string line_;
    int number_ = 0;
};

/// Lines from standard input, read on the loop so that a script can answer what was printed.
class ScriptInput : public ScriptFile {
  public:
    explicit ScriptInput(ScriptQueue& queue) : lines_(queue) {
        watch_ =
            g_unix_fd_add(STDIN_FILENO, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR),
                          &ScriptInput::OnReadable, this);
    }
    ~ScriptInput() override {
        if (watch_ != 0) g_source_remove(watch_);
    }

  private:
    static gboolean OnReadable(int, GIOCondition, gpointer data) {
        return static_cast<ScriptInput*>(data)->Read() ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
    }

    bool Read() {
        Block block;
        const ssize_t count = read(STDIN_FILENO, block.data(), block.size());
        if (count < 0 && (errno == EINTR || errno == EAGAIN)) return true;
        if (count > 0) {
            lines_.Add({block.data(), static_cast<std::size_t>(count)});
            return true;
        }
        watch_ = 0;
        lines_.End();
        return false;
    }

    LineCutter lines_;
    guint watch_ = 0;
};

bool ReadFile(const std::string& path, LineCutter& lines) {
    std::ifstream file(path);
    Block block;
    while (file) {
        file.read(block.data(), block.size());
        lines.Add({block.data(), static_cast<std::size_t>(file.gcount())});
    }
    return file.eof();
}

}  // namespace

Outcome<std::unique_ptr<ScriptFile>> OpenScript(const std::string& path, ScriptQueue& queue) {
    if (path == "-") return std::unique_ptr<ScriptFile>(std::make_unique<ScriptInput>(queue));
    LineCutter lines(queue);
    if (!ReadFile(path, lines)) return Failure{"cannot read the script " + path};
    lines.End();
    return std::make_unique<ScriptFile>();
}

}  // namespace Host
