#include "host/comp/Composition.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <utility>

namespace host {

namespace {

// A 50 mm lens on 36 mm wide film sees the composition width at this many widths away.
constexpr double kDefaultZoomPerWidth = 50.0 / 36.0;

bool unset(const Animated<double>& value) { return !value.is_animated() && value.at(0) == 0.0; }

}  // namespace

Composition::Composition(std::string name, int width, int height, double frame_rate,
                         double duration)
    : name_(std::move(name)),
      width_(width),
      height_(height),
      frame_rate_(frame_rate),
      duration_(duration) {}

int lastFrameOf(double duration, double frame_rate) {
    const double frames = std::ceil(duration * frame_rate - 1e-9);
    if (!(frames >= 1.0)) return 0;
    return frames > double(INT_MAX) ? INT_MAX - 1 : static_cast<int>(frames) - 1;
}

unsigned Composition::time_scale() const {
    // Hundredths of a frame keep every frame time exact, including 29.97 fps.
    const double scale = std::round(std::min(frame_rate_, kMaxFrameRate) * 100.0);
    return scale >= 1.0 ? static_cast<unsigned>(scale) : 100u;
}

double Composition::max_seconds() const { return double(INT32_MAX) / time_scale(); }

Layer& Composition::add_layer(Layer layer) {
    layer.id = next_id_++;
    if (layer.duration <= 0) layer.duration = duration_ - layer.in_point;
    if (layer.kind == LayerKind::Camera) {
        double preset_zoom = default_camera_distance();
        if (unset(layer.camera.zoom)) layer.camera.zoom = Animated<double>(preset_zoom);
        if (unset(layer.camera.focus_distance)) {
            layer.camera.focus_distance = Animated<double>(layer.camera.zoom.at(0));
        }
    }
    layers_.push_back(std::make_unique<Layer>(std::move(layer)));
    return *layers_.back();
}

const Layer* Composition::find_by_id(int id) const {
    for (const auto& l : layers_)
        if (l->id == id) return l.get();
    return nullptr;
}

Layer* Composition::find_by_id(int id) {
    for (auto& l : layers_)
        if (l->id == id) return l.get();
    return nullptr;
}

int Composition::index_of(int id) const {
    for (std::size_t i = 0; i < layers_.size(); ++i)
        if (layers_[i]->id == id) return static_cast<int>(i);
    return -1;
}

const Layer* Composition::find_by_name(const std::string& name) const {
    for (const auto& l : layers_)
        if (l->display_name() == name) return l.get();
    return nullptr;
}

const Layer* Composition::parent_of(const Layer& layer) const {
    return layer.parent_id == 0 ? nullptr : find_by_id(layer.parent_id);
}

const Layer* Composition::active_camera(double comp_seconds) const {
    for (const auto& l : layers_) {
        if (l->kind == LayerKind::Camera && l->video_active && l->spans(comp_seconds)) {
            return l.get();
        }
    }
    return nullptr;
}

DefaultCamera Composition::default_camera() const {
    double d = width_ * kDefaultZoomPerWidth;
    return DefaultCamera{d, Vec3{width_ * 0.5, height_ * 0.5, -d}};
}

void Composition::set_layer_expression(int layer_id, int stream, const std::string& text) {
    auto key = std::make_pair(layer_id, stream);
    if (text.empty()) {
        layer_expressions_.erase(key);
    } else {
        layer_expressions_[key] = text;
    }
}

const std::string* Composition::layer_expression(int layer_id, int stream) const {
    auto it = layer_expressions_.find(std::make_pair(layer_id, stream));
    return it == layer_expressions_.end() ? nullptr : &it->second;
}

}  // namespace host
