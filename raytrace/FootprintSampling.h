#pragma once

#include "AEConfig.h"
#include "AE_Effect.h"
#include "AE_EffectCB.h"
#include "AE_MyLib/AEObject/AEGP_SuiteHandler.h"
#include "math/Vectormath.h"
#include "render/RenderInfo.h"

// Texture footprint filtering: the area of the texture one output pixel covers at a hit, and
// the host's area sampling over it, across the u seam and the borders between the copies of
// the extended cylinder. Every sampler exists for the texture depths PF_Pixel, PF_Pixel16 and
// PF_PixelFloat and returns straight PF_PixelFloat with 8- and 16-bit white read as 1.0.
// The sampling suites are acquired lazily through info.suites; a missing suite throws PF_Err.

// Footprint radii (xr, yr) in texture pixels, each at most 128, of the hit at ray parameter t.
// p: unit-shape position of the hit (x/a, y/b, z/c; 0 where 1/c is 0); n: unit normal.
void getSampRadius(const RenderInfoTemplate<Cylinder>& info, const Ray& ray, const double& t,
                   const Vectormath::Aos::Vector3& p, const Vectormath::Aos::Vector3& n,
                   double& xr, double& yr);

// Samples `layer` around (u, v), u in [0, K) and v unbounded (after the open factor, before the
// extension mapping, which happens here), with a box of half-sizes (xr, yr) texture pixels.
// Where the box reaches a neighbouring copy, that copy's sample is added to the alpha.
// p is not used. Returns the host's code of the last sampling call.
template <class T>
int TopologycalSampling(const RenderInfoTemplate<Cylinder>& info, const Vectormath::Aos::Vector3& p,
                        double u, double v, double xr, double yr, PF_LayerDef* layer,
                        PF_PixelFloat& out);

// Samples pb's source at (u, v) and, when the horizontal footprint xr crosses either end of
// the u range [0, K), also on the far side of it, adding the two alphas. The vertical radius
// comes from pb; the sixth argument is ignored.
template <class T>
int ULoopSampling(const RenderInfoTemplate<Cylinder>& info, const double& K, double u, double v,
                  double xr, double ignored, const PF_SampPB& pb, PF_PixelFloat& out);

// One host area sample at the 16.16 texture position (x, y), converted to float.
template <class T>
int AreaSample(const PF_InData* in_data, const AEGP_SuiteHandler& suites, int x, int y,
               const PF_SampPB& pb, PF_PixelFloat& out);

// The sampling block for a box of half-sizes (x_radius, y_radius) pixels over `src`.
PF_SampPB areaSampleBlock(double x_radius, double y_radius, PF_LayerDef* src);

// One host area sample of pb.src, a world of depth T, at the 16.16 position (x, y), as straight
// float. Float worlds are written by the host directly, without conversion.
template <class T>
int sampleStraight(const RenderInfoTemplate<Cylinder>& info, PF_Fixed x, PF_Fixed y,
                   const PF_SampPB& pb, PF_PixelFloat& out);
template <>
int sampleStraight<PF_PixelFloat>(const RenderInfoTemplate<Cylinder>& info, PF_Fixed x,
                                  PF_Fixed y, const PF_SampPB& pb, PF_PixelFloat& out);

extern template int TopologycalSampling<PF_Pixel>(const RenderInfoTemplate<Cylinder>&,
                                                  const Vectormath::Aos::Vector3&, double, double,
                                                  double, double, PF_LayerDef*, PF_PixelFloat&);
extern template int TopologycalSampling<PF_Pixel16>(const RenderInfoTemplate<Cylinder>&,
                                                    const Vectormath::Aos::Vector3&, double,
                                                    double, double, double, PF_LayerDef*,
                                                    PF_PixelFloat&);
extern template int TopologycalSampling<PF_PixelFloat>(const RenderInfoTemplate<Cylinder>&,
                                                       const Vectormath::Aos::Vector3&, double,
                                                       double, double, double, PF_LayerDef*,
                                                       PF_PixelFloat&);

extern template int ULoopSampling<PF_Pixel>(const RenderInfoTemplate<Cylinder>&, const double&,
                                            double, double, double, double, const PF_SampPB&,
                                            PF_PixelFloat&);
extern template int ULoopSampling<PF_Pixel16>(const RenderInfoTemplate<Cylinder>&, const double&,
                                              double, double, double, double, const PF_SampPB&,
                                              PF_PixelFloat&);
extern template int ULoopSampling<PF_PixelFloat>(const RenderInfoTemplate<Cylinder>&,
                                                 const double&, double, double, double, double,
                                                 const PF_SampPB&, PF_PixelFloat&);

extern template int AreaSample<PF_Pixel>(const PF_InData*, const AEGP_SuiteHandler&, int, int,
                                         const PF_SampPB&, PF_PixelFloat&);
extern template int AreaSample<PF_Pixel16>(const PF_InData*, const AEGP_SuiteHandler&, int, int,
                                           const PF_SampPB&, PF_PixelFloat&);

extern template int sampleStraight<PF_Pixel>(const RenderInfoTemplate<Cylinder>&, PF_Fixed,
                                             PF_Fixed, const PF_SampPB&, PF_PixelFloat&);
extern template int sampleStraight<PF_Pixel16>(const RenderInfoTemplate<Cylinder>&, PF_Fixed,
                                               PF_Fixed, const PF_SampPB&, PF_PixelFloat&);
