#pragma once
// A file's channels (grey, grey + alpha, RGB, RGBA, more) onto straight RGBA, for every reader.

#include "host/pixels/Image.h"

namespace host {

inline RGBA toRGBA(const float* channels, int count, int alpha_channel) {
    RGBA p;
    if (count <= 2) {
        p.r = p.g = p.b = channels[0];
    } else {
        p.r = channels[0];
        p.g = channels[1];
        p.b = channels[2];
    }
    if (alpha_channel < 0 && count == 2) alpha_channel = 1;
    p.a = alpha_channel >= 0 && alpha_channel < count ? channels[alpha_channel] : 1.0f;
    return p;
}

}  // namespace host
