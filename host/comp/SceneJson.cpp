#include "host/comp/SceneJson.h"

#include "host/comp/Scene.h"

#include <functional>
#include <set>
#include <vector>

namespace host {

namespace {

// Follows the parser through the document so that any failure can name the JSON path it
// happened at, and refuses a key that its object already has.
class PathTracker {
public:
    explicit PathTracker(std::string file) : file_(std::move(file)) {}

    bool operator()(int, SceneJson::parse_event_t event, SceneJson& parsed) {
        using Event = SceneJson::parse_event_t;
        switch (event) {
            case Event::object_start: open(false); break;
            case Event::array_start: open(true); break;
            case Event::object_end:
            case Event::array_end: frames_.pop_back(); break;
            case Event::key: key(parsed.get<std::string>()); break;
            case Event::value: begin_value(); break;
        }
        return true;
    }

    // Path of the value being read now (the one a parse error is about).
    std::string pending_path() const {
        if (frames_.empty()) return "";
        const Frame& top = frames_.back();
        if (top.array) return top.path + "[" + std::to_string(top.count) + "]";
        return top.key.empty() ? top.path : join(top.path, top.key);
    }

    [[noreturn]] void fail(const std::string& path, const std::string& problem) const {
        throw SceneError(file_ + ": " + (path.empty() ? "" : path + ": ") + problem);
    }

private:
    struct Frame {
        bool array = false;
        std::string path;
        std::size_t count = 0;  // array elements begun so far
        std::string key;        // object member being read
        std::set<std::string> keys;
    };

    static std::string join(const std::string& path, const std::string& key) {
        return path.empty() ? key : path + "." + key;
    }

    // A value (scalar or container) begins at the current position; returns its path.
    std::string begin_value() {
        const std::string path = pending_path();
        if (!frames_.empty() && frames_.back().array) ++frames_.back().count;
        return path;
    }

    void open(bool array) {
        Frame frame;
        frame.array = array;
        frame.path = begin_value();
        frames_.push_back(std::move(frame));
    }

    void key(const std::string& name) {
        Frame& top = frames_.back();
        top.key = name;
        if (!top.keys.insert(name).second) fail(join(top.path, name), "given twice in the same object");
    }

    std::string file_;
    std::vector<Frame> frames_;
};

// "[json.exception.parse_error.101] parse error at line 1, ..." without the bracketed id.
std::string withoutExceptionId(const std::string& what) {
    const std::size_t close = what.find("] ");
    return what.rfind("[json.exception.", 0) == 0 && close != std::string::npos ? what.substr(close + 2) : what;
}

}  // namespace

SceneJson parseSceneJson(const std::string& text, const std::string& file) {
    PathTracker tracker(file);
    try {
        return SceneJson::parse(text, std::ref(tracker));
    } catch (const nlohmann::json::parse_error& e) {
        tracker.fail(tracker.pending_path(), "not valid JSON: " + withoutExceptionId(e.what()));
    } catch (const nlohmann::json::out_of_range& e) {
        // The only range error of parsing: a number beyond the largest double (406).
        tracker.fail(tracker.pending_path(), "the number is too large: " + withoutExceptionId(e.what()));
    }
}

}  // namespace host
