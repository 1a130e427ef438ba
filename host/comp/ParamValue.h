#pragma once
// The value of one effect parameter as the user sets it, keyframed by Animated<ParamValue>.

namespace host {

// A parameter value as the user sets it. Units: sliders and angles in their own units
// (degrees for angles), points in full-resolution layer pixels, colours as 8-bit A,R,G,B,
// popups 1-based, checkboxes 0/1, layer params the layer's id (0 = <none>).
struct ParamValue {
    double v[4] = {0, 0, 0, 0};

    static ParamValue number(double x) { return ParamValue{{x, 0, 0, 0}}; }
    static ParamValue point(double x, double y) { return ParamValue{{x, y, 0, 0}}; }
    static ParamValue color(double red, double green, double blue, double alpha = 255) {
        return ParamValue{{alpha, red, green, blue}};
    }
    static ParamValue layer(int layer_id) { return number(layer_id); }

    ParamValue operator+(const ParamValue& o) const {
        return ParamValue{{v[0] + o.v[0], v[1] + o.v[1], v[2] + o.v[2], v[3] + o.v[3]}};
    }
    ParamValue operator-(const ParamValue& o) const {
        return ParamValue{{v[0] - o.v[0], v[1] - o.v[1], v[2] - o.v[2], v[3] - o.v[3]}};
    }
    ParamValue operator*(double f) const {
        return ParamValue{{v[0] * f, v[1] * f, v[2] * f, v[3] * f}};
    }
};

}  // namespace host
