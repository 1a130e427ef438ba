// The per-pixel ray builder must give exactly the rays of cameraRay for every sample of the
// grid, whatever the camera: the coverage test and the shading rely on bit-identical rays.

#include <cstring>

#include <gtest/gtest.h>

#include "raytrace/PixelCameraRays.h"
#include "raytrace/PrimaryRays.h"

namespace {

using Vectormath::Aos::Matrix4;
using Vectormath::Aos::Vector3;
using Vectormath::Aos::Vector4;

class PixelCameraRaysTest : public ::testing::TestWithParam<bool> {
protected:
    // A camera turned off every axis and placed off the shape's axis, so that no product of the
    // camera columns is trivially exact.
    PixelCameraRaysTest() : info_(nullptr)
    {
        info_.camera_to_object =
            Matrix4(Vector4(0.8f, 0.36f, -0.48f, 0.0f), Vector4(-0.6f, 0.48f, -0.64f, 0.0f),
                    Vector4(0.0f, 0.8f, 0.6f, 0.0f), Vector4(13.7f, -2210.3f, 97.1f, 1.0f));
        info_.size = Vector3(310.5f, 190.25f, 77.0f);
        info_.neg_focal = -1777.7f;
        info_.image_center[0] = 960.3f;
        info_.image_center[1] = 540.7f;
        info_.perspective = GetParam();
    }

    // Every sample of pixels spread over the frame, in every grid cell.
    void expectSameRaysAsCameraRay() const
    {
        const int pixels[][2] = {{0, 0}, {1, 0}, {959, 540}, {1919, 1079}, {-3, 7}, {4000, -20}};
        for (const auto& pixel : pixels) {
            PixelCameraRays rays(info_, pixel[0], pixel[1]);
            rays.addCentreOffsets();
            for (int column = 0; column < 3; ++column) {
                for (int row = 0; row < 3; ++row) {
                    const Ray expected = cameraRay(info_, pixel[0], pixel[1],
                                                   kGridOffsets[column], kGridOffsets[row]);
                    const Ray got = rays.ray(column, row);
                    EXPECT_EQ(std::memcmp(&got, &expected, sizeof(Ray)), 0)
                        << "pixel (" << pixel[0] << ", " << pixel[1] << ") cell (" << column
                        << ", " << row << ")";
                }
            }
        }
    }

    RenderInfo info_;
};

// At full resolution, then downsampled with non-square pixels.
TEST_P(PixelCameraRaysTest, MatchesCameraRay)
{
    expectSameRaysAsCameraRay();
    info_.downsample_x = 1.0 / 3.0;
    info_.downsample_y = 0.5;
    info_.pixel_aspect = 10.0 / 11.0;
    expectSameRaysAsCameraRay();
}

INSTANTIATE_TEST_SUITE_P(Cameras, PixelCameraRaysTest, ::testing::Values(true, false),
                         [](const ::testing::TestParamInfo<bool>& p) {
                             return p.param ? "Perspective" : "Parallel";
                         });

}  // namespace
