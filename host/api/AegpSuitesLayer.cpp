// Layer, Comp, Item, Camera and Light suites: questions about the composition's objects.
#include "host/api/AegpSuitesInternal.h"

#include "host/session/Host.h"
#include "host/comp/Transform.h"

namespace host {
namespace aegp {

namespace {

// Film of a 35 mm camera: 36 mm wide, in pixels of 72 per inch.
constexpr double kFilmWidthPixels = 36.0 * 72.0 / 25.4;

Composition& comp_of(AegpSuites* s) { return *s->composition(); }

#define NEED_COMP(handle) \
    if (s_->composition() == nullptr || !s_->is_comp(handle)) return A_Err_PARAMETER

// ---- Layer suite -------------------------------------------------------------------------

A_Err GetCompNumLayers(AEGP_CompH compH, A_long* num) {
    AEGP_ENTER("AEGP_GetCompNumLayers");
    NEED_COMP(compH);
    if (num == nullptr) return A_Err_PARAMETER;
    *num = static_cast<A_long>(comp_of(s_).num_layers());
    return A_Err_NONE;
}

A_Err GetCompLayerByIndex(AEGP_CompH compH, A_long index, AEGP_LayerH* layerPH) {
    AEGP_ENTER("AEGP_GetCompLayerByIndex");
    NEED_COMP(compH);
    Composition& comp = comp_of(s_);
    if (layerPH == nullptr || index < 0 || static_cast<std::size_t>(index) >= comp.num_layers()) {
        return A_Err_PARAMETER;
    }
    *layerPH = s_->layer_handle(comp.layer(index).id);
    return A_Err_NONE;
}

A_Err GetLayerIndex(AEGP_LayerH layerH, A_long* index) {
    AEGP_ENTER("AEGP_GetLayerIndex");
    NEED_LAYER(layerH);
    if (index == nullptr) return A_Err_PARAMETER;
    *index = comp_of(s_).index_of(layer->id);
    return A_Err_NONE;
}

A_Err GetLayerSourceItem(AEGP_LayerH layerH, AEGP_ItemH* itemPH) {
    AEGP_ENTER("AEGP_GetLayerSourceItem");
    NEED_LAYER(layerH);
    if (itemPH == nullptr) return A_Err_PARAMETER;
    *itemPH = layer->has_source() ? s_->item_handle(layer->id) : nullptr;
    return A_Err_NONE;
}

A_Err GetLayerSourceItemID(AEGP_LayerH layerH, A_long* id) {
    AEGP_ENTER("AEGP_GetLayerSourceItemID");
    NEED_LAYER(layerH);
    if (id == nullptr) return A_Err_PARAMETER;
    *id = layer->has_source() ? layer->id + 1000 : 0;
    return A_Err_NONE;
}

A_Err GetLayerParentComp(AEGP_LayerH layerH, AEGP_CompH* compPH) {
    AEGP_ENTER("AEGP_GetLayerParentComp");
    NEED_LAYER(layerH);
    if (compPH == nullptr) return A_Err_PARAMETER;
    *compPH = s_->comp_handle();
    return A_Err_NONE;
}

A_Err GetLayerName(AEGP_PluginID, AEGP_LayerH layerH, AEGP_MemHandle* layer_namePH0,
                   AEGP_MemHandle* source_namePH0) {
    AEGP_ENTER("AEGP_GetLayerName");
    NEED_LAYER(layerH);
    if (layer_namePH0 != nullptr) {
        std::vector<A_UTF16Char> name = to_utf16(layer->name);
        *layer_namePH0 = new_mem_handle(name.data(), name.size() * sizeof(A_UTF16Char));
    }
    if (source_namePH0 != nullptr) {
        std::vector<A_UTF16Char> name = to_utf16(layer->source.name);
        *source_namePH0 = new_mem_handle(name.data(), name.size() * sizeof(A_UTF16Char));
    }
    return A_Err_NONE;
}

A_Err GetLayerQuality(AEGP_LayerH layerH, AEGP_LayerQuality* quality) {
    AEGP_ENTER("AEGP_GetLayerQuality");
    NEED_LAYER(layerH);
    if (quality == nullptr) return A_Err_PARAMETER;
    *quality = AEGP_LayerQual_BEST;
    return A_Err_NONE;
}

AEGP_LayerFlags flags_of(const Layer& l) {
    AEGP_LayerFlags f = AEGP_LayerFlag_EFFECTS_ACTIVE;
    if (l.video_active) f |= AEGP_LayerFlag_VIDEO_ACTIVE;
    if (l.is_three_d()) f |= AEGP_LayerFlag_LAYER_IS_3D;
    if (l.kind == LayerKind::Null) f |= AEGP_LayerFlag_NULL_LAYER;
    if ((l.kind == LayerKind::Camera || l.kind == LayerKind::Light) && l.transform.auto_orient) {
        f |= AEGP_LayerFlag_LOOK_AT_POI;
    }
    return f;
}

A_Err GetLayerFlags(AEGP_LayerH layerH, AEGP_LayerFlags* flags) {
    AEGP_ENTER("AEGP_GetLayerFlags");
    NEED_LAYER(layerH);
    if (flags == nullptr) return A_Err_PARAMETER;
    *flags = flags_of(*layer);
    return A_Err_NONE;
}

A_Err SetLayerFlag(AEGP_LayerH layerH, AEGP_LayerFlags flag, A_Boolean value) {
    AEGP_ENTER("AEGP_SetLayerFlag");
    NEED_LAYER(layerH);
    if (flag == AEGP_LayerFlag_VIDEO_ACTIVE) {
        layer->video_active = value != 0;
    } else if (flag == AEGP_LayerFlag_LAYER_IS_3D && layer->has_source()) {
        layer->is_3d = value != 0;
    } else {
        return A_Err_PARAMETER;
    }
    return A_Err_NONE;
}

A_Err IsLayerVideoReallyOn(AEGP_LayerH layerH, A_Boolean* on) {
    AEGP_ENTER("AEGP_IsLayerVideoReallyOn");
    NEED_LAYER(layerH);
    if (on == nullptr) return A_Err_PARAMETER;
    *on = layer->video_active ? 1 : 0;
    return A_Err_NONE;
}

// A time of the layer in the requested mode, in the composition's time scale.
A_Time in_mode(AegpSuites* s, const Layer& l, AEGP_LTimeMode mode, double comp_seconds) {
    double t = mode == AEGP_LTimeMode_LayerTime ? l.layer_time(comp_seconds) : comp_seconds;
    return from_seconds(t, comp_of(s).time_scale());
}

A_Err GetLayerInPoint(AEGP_LayerH layerH, AEGP_LTimeMode mode, A_Time* in) {
    AEGP_ENTER("AEGP_GetLayerInPoint");
    NEED_LAYER(layerH);
    if (in == nullptr) return A_Err_PARAMETER;
    *in = in_mode(s_, *layer, mode, layer->in_point);
    return A_Err_NONE;
}

A_Err GetLayerDuration(AEGP_LayerH layerH, AEGP_LTimeMode, A_Time* duration) {
    AEGP_ENTER("AEGP_GetLayerDuration");
    NEED_LAYER(layerH);
    if (duration == nullptr) return A_Err_PARAMETER;
    *duration = from_seconds(layer->duration, comp_of(s_).time_scale());  // no time stretch
    return A_Err_NONE;
}

A_Err GetLayerOffset(AEGP_LayerH layerH, A_Time* offset) {
    AEGP_ENTER("AEGP_GetLayerOffset");
    NEED_LAYER(layerH);
    if (offset == nullptr) return A_Err_PARAMETER;
    *offset = from_seconds(layer->start_time, comp_of(s_).time_scale());
    return A_Err_NONE;
}

A_Err GetLayerStretch(AEGP_LayerH layerH, A_Ratio* stretch) {
    AEGP_ENTER("AEGP_GetLayerStretch");
    NEED_LAYER(layerH);
    if (stretch == nullptr) return A_Err_PARAMETER;
    *stretch = A_Ratio{1, 1};
    return A_Err_NONE;
}

A_Err GetLayerObjectType(AEGP_LayerH layerH, AEGP_ObjectType* type) {
    AEGP_ENTER("AEGP_GetLayerObjectType");
    NEED_LAYER(layerH);
    if (type == nullptr) return A_Err_PARAMETER;
    switch (layer->kind) {
        case LayerKind::Camera: *type = AEGP_ObjectType_CAMERA; break;
        case LayerKind::Light: *type = AEGP_ObjectType_LIGHT; break;
        default: *type = AEGP_ObjectType_AV; break;
    }
    return A_Err_NONE;
}

A_Err IsLayer3D(AEGP_LayerH layerH, A_Boolean* is3d) {
    AEGP_ENTER("AEGP_IsLayer3D");
    NEED_LAYER(layerH);
    if (is3d == nullptr) return A_Err_PARAMETER;
    *is3d = layer->is_three_d() ? 1 : 0;
    return A_Err_NONE;
}

A_Err IsLayer2D(AEGP_LayerH layerH, A_Boolean* is2d) {
    AEGP_ENTER("AEGP_IsLayer2D");
    NEED_LAYER(layerH);
    if (is2d == nullptr) return A_Err_PARAMETER;
    *is2d = layer->is_three_d() ? 0 : 1;
    return A_Err_NONE;
}

A_Err IsVideoActive(AEGP_LayerH layerH, AEGP_LTimeMode mode, const A_Time* t, A_Boolean* active) {
    AEGP_ENTER("AEGP_IsVideoActive");
    NEED_LAYER(layerH);
    double seconds;
    if (active == nullptr || !to_seconds(t, &seconds)) return A_Err_PARAMETER;
    double comp_seconds = mode == AEGP_LTimeMode_LayerTime ? layer->comp_time(seconds) : seconds;
    *active = layer->video_active && layer->spans(comp_seconds) ? 1 : 0;
    return A_Err_NONE;
}

A_Err ConvertCompToLayerTime(AEGP_LayerH layerH, const A_Time* comp_t, A_Time* layer_t) {
    AEGP_ENTER("AEGP_ConvertCompToLayerTime");
    NEED_LAYER(layerH);
    double seconds;
    if (layer_t == nullptr || !to_seconds(comp_t, &seconds)) return A_Err_PARAMETER;
    *layer_t = from_seconds(layer->layer_time(seconds), comp_t->scale);
    return A_Err_NONE;
}

A_Err ConvertLayerToCompTime(AEGP_LayerH layerH, const A_Time* layer_t, A_Time* comp_t) {
    AEGP_ENTER("AEGP_ConvertLayerToCompTime");
    NEED_LAYER(layerH);
    double seconds;
    if (comp_t == nullptr || !to_seconds(layer_t, &seconds)) return A_Err_PARAMETER;
    *comp_t = from_seconds(layer->comp_time(seconds), layer_t->scale);
    return A_Err_NONE;
}

A_Err GetLayerID(AEGP_LayerH layerH, AEGP_LayerIDVal* id) {
    AEGP_ENTER("AEGP_GetLayerID");
    NEED_LAYER(layerH);
    if (id == nullptr) return A_Err_PARAMETER;
    *id = layer->id;
    return A_Err_NONE;
}

A_Err GetLayerToWorldXform(AEGP_LayerH layerH, const A_Time* comp_t, A_Matrix4* xform) {
    AEGP_ENTER("AEGP_GetLayerToWorldXform");
    NEED_LAYER(layerH);
    double seconds;
    if (xform == nullptr || !to_seconds(comp_t, &seconds)) return A_Err_PARAMETER;
    const Composition& comp = comp_of(s_);
    Matrix4d m = layer_to_world(comp, *layer, seconds);
    // Non-square source pixels: layer x is first brought to the composition's pixel shape.
    if (layer->has_source()) {
        double ratio = (static_cast<double>(layer->source.par_num) / layer->source.par_den) /
                       (static_cast<double>(comp.par_num()) / comp.par_den());
        if (ratio != 1.0) m = Matrix4d::scaling(Vec3{ratio, 1, 1}) * m;
    }
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) xform->mat[r][c] = m.m[r][c];
    return A_Err_NONE;
}

A_Err SetLayerName(AEGP_LayerH layerH, const A_UTF16Char* name) {
    AEGP_ENTER("AEGP_SetLayerName");
    NEED_LAYER(layerH);
    if (name == nullptr) return A_Err_PARAMETER;
    layer->name = to_utf8(name);
    return A_Err_NONE;
}

A_Err GetLayerParent(AEGP_LayerH layerH, AEGP_LayerH* parentPH) {
    AEGP_ENTER("AEGP_GetLayerParent");
    NEED_LAYER(layerH);
    if (parentPH == nullptr) return A_Err_PARAMETER;
    *parentPH = layer->parent_id == 0 ? nullptr : s_->layer_handle(layer->parent_id);
    return A_Err_NONE;
}

A_Err GetLayerFromLayerID(AEGP_CompH compH, AEGP_LayerIDVal id, AEGP_LayerH* layerPH) {
    AEGP_ENTER("AEGP_GetLayerFromLayerID");
    NEED_COMP(compH);
    if (layerPH == nullptr) return A_Err_PARAMETER;
    *layerPH = s_->layer_handle(id);
    return *layerPH == nullptr ? A_Err_PARAMETER : A_Err_NONE;
}

AEGP_LayerSuite6 make_layer_suite() {
    AEGP_LayerSuite6 t{};
    t.AEGP_GetCompNumLayers = GetCompNumLayers;
    t.AEGP_GetCompLayerByIndex = GetCompLayerByIndex;
    AEGP_UNIMPLEMENTED(t, AEGP_GetActiveLayer);
    t.AEGP_GetLayerIndex = GetLayerIndex;
    t.AEGP_GetLayerSourceItem = GetLayerSourceItem;
    t.AEGP_GetLayerSourceItemID = GetLayerSourceItemID;
    t.AEGP_GetLayerParentComp = GetLayerParentComp;
    t.AEGP_GetLayerName = GetLayerName;
    t.AEGP_GetLayerQuality = GetLayerQuality;
    AEGP_UNIMPLEMENTED(t, AEGP_SetLayerQuality);
    t.AEGP_GetLayerFlags = GetLayerFlags;
    t.AEGP_SetLayerFlag = SetLayerFlag;
    t.AEGP_IsLayerVideoReallyOn = IsLayerVideoReallyOn;
    AEGP_UNIMPLEMENTED(t, AEGP_IsLayerAudioReallyOn);
    AEGP_UNIMPLEMENTED(t, AEGP_GetLayerCurrentTime);
    t.AEGP_GetLayerInPoint = GetLayerInPoint;
    t.AEGP_GetLayerDuration = GetLayerDuration;
    AEGP_UNIMPLEMENTED(t, AEGP_SetLayerInPointAndDuration);
    t.AEGP_GetLayerOffset = GetLayerOffset;
    AEGP_UNIMPLEMENTED(t, AEGP_SetLayerOffset);
    t.AEGP_GetLayerStretch = GetLayerStretch;
    AEGP_UNIMPLEMENTED(t, AEGP_SetLayerStretch);
    AEGP_UNIMPLEMENTED(t, AEGP_GetLayerTransferMode);
    AEGP_UNIMPLEMENTED(t, AEGP_SetLayerTransferMode);
    AEGP_UNIMPLEMENTED(t, AEGP_IsAddLayerValid);
    AEGP_UNIMPLEMENTED(t, AEGP_AddLayer);
    AEGP_UNIMPLEMENTED(t, AEGP_ReorderLayer);
    AEGP_UNIMPLEMENTED(t, AEGP_GetLayerMaskedBounds);
    t.AEGP_GetLayerObjectType = GetLayerObjectType;
    t.AEGP_IsLayer3D = IsLayer3D;
    t.AEGP_IsLayer2D = IsLayer2D;
    t.AEGP_IsVideoActive = IsVideoActive;
    AEGP_UNIMPLEMENTED(t, AEGP_IsLayerUsedAsTrackMatte);
    AEGP_UNIMPLEMENTED(t, AEGP_DoesLayerHaveTrackMatte);
    t.AEGP_ConvertCompToLayerTime = ConvertCompToLayerTime;
    t.AEGP_ConvertLayerToCompTime = ConvertLayerToCompTime;
    AEGP_UNIMPLEMENTED(t, AEGP_GetLayerDancingRandValue);
    t.AEGP_GetLayerID = GetLayerID;
    t.AEGP_GetLayerToWorldXform = GetLayerToWorldXform;
    AEGP_UNIMPLEMENTED(t, AEGP_GetLayerToWorldXformFromView);
    t.AEGP_SetLayerName = SetLayerName;
    t.AEGP_GetLayerParent = GetLayerParent;
    AEGP_UNIMPLEMENTED(t, AEGP_SetLayerParent);
    AEGP_UNIMPLEMENTED(t, AEGP_DeleteLayer);
    AEGP_UNIMPLEMENTED(t, AEGP_DuplicateLayer);
    t.AEGP_GetLayerFromLayerID = GetLayerFromLayerID;
    return t;
}

// ---- Comp suite --------------------------------------------------------------------------

A_Err GetCompFromItem(AEGP_ItemH itemH, AEGP_CompH* compPH) {
    AEGP_ENTER("AEGP_GetCompFromItem");
    int id;
    if (compPH == nullptr || !s_->item_of(itemH, &id)) return A_Err_PARAMETER;
    *compPH = id == 0 ? s_->comp_handle() : nullptr;
    return A_Err_NONE;
}

A_Err GetItemFromComp(AEGP_CompH compH, AEGP_ItemH* itemPH) {
    AEGP_ENTER("AEGP_GetItemFromComp");
    NEED_COMP(compH);
    if (itemPH == nullptr) return A_Err_PARAMETER;
    *itemPH = s_->item_handle(0);
    return A_Err_NONE;
}

A_Err GetCompDownsampleFactor(AEGP_CompH compH, AEGP_DownsampleFactor* dsf) {
    AEGP_ENTER("AEGP_GetCompDownsampleFactor");
    NEED_COMP(compH);
    if (dsf == nullptr) return A_Err_PARAMETER;
    *dsf = AEGP_DownsampleFactor{1, 1};
    return A_Err_NONE;
}

A_Err GetCompBGColor(AEGP_CompH compH, AEGP_ColorVal* color) {
    AEGP_ENTER("AEGP_GetCompBGColor");
    NEED_COMP(compH);
    if (color == nullptr) return A_Err_PARAMETER;
    const Color& c = comp_of(s_).background();
    *color = AEGP_ColorVal{c.alpha, c.red, c.green, c.blue};
    return A_Err_NONE;
}

A_Err GetCompFlags(AEGP_CompH compH, AEGP_CompFlags* flags) {
    AEGP_ENTER("AEGP_GetCompFlags");
    NEED_COMP(compH);
    if (flags == nullptr) return A_Err_PARAMETER;
    *flags = 0;
    return A_Err_NONE;
}

A_Err GetCompFramerate(AEGP_CompH compH, A_FpLong* fps) {
    AEGP_ENTER("AEGP_GetCompFramerate");
    NEED_COMP(compH);
    if (fps == nullptr) return A_Err_PARAMETER;
    *fps = comp_of(s_).frame_rate();
    return A_Err_NONE;
}

A_Err GetCompFrameDuration(AEGP_CompH compH, A_Time* t) {
    AEGP_ENTER("AEGP_GetCompFrameDuration");
    NEED_COMP(compH);
    if (t == nullptr) return A_Err_PARAMETER;
    const Composition& comp = comp_of(s_);
    *t = from_seconds(1.0 / comp.frame_rate(), comp.time_scale());
    return A_Err_NONE;
}

A_Err GetMostRecentlyUsedComp(AEGP_CompH* compPH) {
    AEGP_ENTER("AEGP_GetMostRecentlyUsedComp");
    if (compPH == nullptr) return A_Err_PARAMETER;
    *compPH = s_->composition() == nullptr ? nullptr : s_->comp_handle();
    return A_Err_NONE;
}

AEGP_CompSuite5 make_comp_suite() {
    AEGP_CompSuite5 t{};
    t.AEGP_GetCompFromItem = GetCompFromItem;
    t.AEGP_GetItemFromComp = GetItemFromComp;
    t.AEGP_GetCompDownsampleFactor = GetCompDownsampleFactor;
    AEGP_UNIMPLEMENTED(t, AEGP_SetCompDownsampleFactor);
    t.AEGP_GetCompBGColor = GetCompBGColor;
    AEGP_UNIMPLEMENTED(t, AEGP_SetCompBGColor);
    t.AEGP_GetCompFlags = GetCompFlags;
    t.AEGP_GetCompFramerate = GetCompFramerate;
    AEGP_UNIMPLEMENTED(t, AEGP_SetCompFrameRate);
    AEGP_UNIMPLEMENTED(t, AEGP_GetCompShutterAnglePhase);
    AEGP_UNIMPLEMENTED(t, AEGP_GetCompShutterFrameRange);
    AEGP_UNIMPLEMENTED(t, AEGP_GetCompWorkAreaStart);
    AEGP_UNIMPLEMENTED(t, AEGP_GetCompWorkAreaDuration);
    AEGP_UNIMPLEMENTED(t, AEGP_SetCompWorkAreaStartAndDuration);
    AEGP_UNIMPLEMENTED(t, AEGP_CreateSolidInComp);
    AEGP_UNIMPLEMENTED(t, AEGP_CreateCameraInComp);
    AEGP_UNIMPLEMENTED(t, AEGP_CreateLightInComp);
    AEGP_UNIMPLEMENTED(t, AEGP_CreateComp);
    AEGP_UNIMPLEMENTED(t, AEGP_GetNewCollectionFromCompSelection);
    AEGP_UNIMPLEMENTED(t, AEGP_SetSelection);
    AEGP_UNIMPLEMENTED(t, AEGP_GetCompDisplayStartTime);
    AEGP_UNIMPLEMENTED(t, AEGP_SetCompDisplayStartTime);
    AEGP_UNIMPLEMENTED(t, AEGP_SetCompDuration);
    AEGP_UNIMPLEMENTED(t, AEGP_CreateNullInComp);
    AEGP_UNIMPLEMENTED(t, AEGP_SetCompPixelAspectRatio);
    AEGP_UNIMPLEMENTED(t, AEGP_CreateTextLayerInComp);
    AEGP_UNIMPLEMENTED(t, AEGP_SetCompDimensions);
    AEGP_UNIMPLEMENTED(t, AEGP_DuplicateComp);
    t.AEGP_GetCompFrameDuration = GetCompFrameDuration;
    t.AEGP_GetMostRecentlyUsedComp = GetMostRecentlyUsedComp;
    return t;
}

// ---- Item suite --------------------------------------------------------------------------

// The item's layer (null for the composition's own item); false for a foreign handle.
bool item_layer(AegpSuites* s, AEGP_ItemH itemH, const Layer** layer) {
    int id;
    if (s->composition() == nullptr || !s->item_of(itemH, &id)) return false;
    *layer = id == 0 ? nullptr : comp_of(s).find_by_id(id);
    return id == 0 || *layer != nullptr;
}

#define NEED_ITEM(handle)                                             \
    const Layer* item_source = nullptr;                               \
    if (!item_layer(s_, handle, &item_source)) return A_Err_PARAMETER

A_Err GetItemType(AEGP_ItemH itemH, AEGP_ItemType* type) {
    AEGP_ENTER("AEGP_GetItemType");
    NEED_ITEM(itemH);
    if (type == nullptr) return A_Err_PARAMETER;
    *type = item_source == nullptr ? AEGP_ItemType_COMP : AEGP_ItemType_FOOTAGE;
    return A_Err_NONE;
}

A_Err GetItemName(AEGP_PluginID, AEGP_ItemH itemH, AEGP_MemHandle* namePH) {
    AEGP_ENTER("AEGP_GetItemName");
    NEED_ITEM(itemH);
    if (namePH == nullptr) return A_Err_PARAMETER;
    std::vector<A_UTF16Char> name =
        to_utf16(item_source == nullptr ? comp_of(s_).name() : item_source->source.name);
    *namePH = new_mem_handle(name.data(), name.size() * sizeof(A_UTF16Char));
    return A_Err_NONE;
}

A_Err GetItemID(AEGP_ItemH itemH, A_long* id) {
    AEGP_ENTER("AEGP_GetItemID");
    NEED_ITEM(itemH);
    if (id == nullptr) return A_Err_PARAMETER;
    *id = item_source == nullptr ? 1 : item_source->id + 1000;
    return A_Err_NONE;
}

A_Err GetItemFlags(AEGP_ItemH itemH, AEGP_ItemFlags* flags) {
    AEGP_ENTER("AEGP_GetItemFlags");
    NEED_ITEM(itemH);
    if (flags == nullptr) return A_Err_PARAMETER;
    *flags = AEGP_ItemFlag_HAS_VIDEO | (item_source != nullptr ? AEGP_ItemFlag_STILL : 0);
    return A_Err_NONE;
}

A_Err GetItemDuration(AEGP_ItemH itemH, A_Time* duration) {
    AEGP_ENTER("AEGP_GetItemDuration");
    NEED_ITEM(itemH);
    if (duration == nullptr) return A_Err_PARAMETER;
    const Composition& comp = comp_of(s_);
    *duration = from_seconds(item_source == nullptr ? comp.duration() : 0.0, comp.time_scale());
    return A_Err_NONE;
}

A_Err GetItemDimensions(AEGP_ItemH itemH, A_long* width, A_long* height) {
    AEGP_ENTER("AEGP_GetItemDimensions");
    NEED_ITEM(itemH);
    if (width == nullptr || height == nullptr) return A_Err_PARAMETER;
    const Composition& comp = comp_of(s_);
    *width = item_source == nullptr ? comp.width() : item_source->source.width;
    *height = item_source == nullptr ? comp.height() : item_source->source.height;
    return A_Err_NONE;
}

A_Err GetItemPixelAspectRatio(AEGP_ItemH itemH, A_Ratio* par) {
    AEGP_ENTER("AEGP_GetItemPixelAspectRatio");
    NEED_ITEM(itemH);
    if (par == nullptr) return A_Err_PARAMETER;
    const Composition& comp = comp_of(s_);
    if (item_source == nullptr) {
        *par = A_Ratio{comp.par_num(), static_cast<A_u_long>(comp.par_den())};
    } else {
        *par = A_Ratio{item_source->source.par_num, static_cast<A_u_long>(item_source->source.par_den)};
    }
    return A_Err_NONE;
}

AEGP_ItemSuite8 make_item_suite() {
    AEGP_ItemSuite8 t{};
    AEGP_UNIMPLEMENTED(t, AEGP_GetFirstProjItem);
    AEGP_UNIMPLEMENTED(t, AEGP_GetNextProjItem);
    AEGP_UNIMPLEMENTED(t, AEGP_GetActiveItem);
    AEGP_UNIMPLEMENTED(t, AEGP_IsItemSelected);
    AEGP_UNIMPLEMENTED(t, AEGP_SelectItem);
    t.AEGP_GetItemType = GetItemType;
    AEGP_UNIMPLEMENTED(t, AEGP_GetTypeName);
    t.AEGP_GetItemName = GetItemName;
    AEGP_UNIMPLEMENTED(t, AEGP_SetItemName);
    t.AEGP_GetItemID = GetItemID;
    t.AEGP_GetItemFlags = GetItemFlags;
    AEGP_UNIMPLEMENTED(t, AEGP_SetItemUseProxy);
    AEGP_UNIMPLEMENTED(t, AEGP_GetItemParentFolder);
    AEGP_UNIMPLEMENTED(t, AEGP_SetItemParentFolder);
    t.AEGP_GetItemDuration = GetItemDuration;
    AEGP_UNIMPLEMENTED(t, AEGP_GetItemCurrentTime);
    t.AEGP_GetItemDimensions = GetItemDimensions;
    t.AEGP_GetItemPixelAspectRatio = GetItemPixelAspectRatio;
    AEGP_UNIMPLEMENTED(t, AEGP_DeleteItem);
    AEGP_UNIMPLEMENTED(t, AEGP_CreateNewFolder);
    AEGP_UNIMPLEMENTED(t, AEGP_SetItemCurrentTime);
    AEGP_UNIMPLEMENTED(t, AEGP_GetItemCommentLength);
    AEGP_UNIMPLEMENTED(t, AEGP_GetItemComment);
    AEGP_UNIMPLEMENTED(t, AEGP_SetItemComment);
    AEGP_UNIMPLEMENTED(t, AEGP_GetItemLabel);
    AEGP_UNIMPLEMENTED(t, AEGP_SetItemLabel);
    AEGP_UNIMPLEMENTED(t, AEGP_GetItemMRUView);
    return t;
}

// ---- Camera and light suites -------------------------------------------------------------

A_Err GetCameraType(AEGP_LayerH layerH, AEGP_CameraType* type) {
    AEGP_ENTER("AEGP_GetCameraType");
    NEED_LAYER(layerH);
    if (type == nullptr) return A_Err_PARAMETER;
    *type = layer->kind != LayerKind::Camera ? static_cast<AEGP_CameraType>(AEGP_CameraType_NONE)
                                             : static_cast<AEGP_CameraType>(layer->camera.projection);
    return A_Err_NONE;
}

A_Err GetDefaultCameraDistanceToImagePlane(AEGP_CompH compH, A_FpLong* distance) {
    AEGP_ENTER("AEGP_GetDefaultCameraDistanceToImagePlane");
    NEED_COMP(compH);
    if (distance == nullptr) return A_Err_PARAMETER;
    *distance = comp_of(s_).default_camera_distance();
    return A_Err_NONE;
}

A_Err GetCameraFilmSize(AEGP_LayerH layerH, AEGP_FilmSizeUnits* units, A_FpLong* size0) {
    AEGP_ENTER("AEGP_GetCameraFilmSize");
    NEED_LAYER(layerH);
    if (units == nullptr || layer->kind != LayerKind::Camera) return A_Err_PARAMETER;
    *units = AEGP_FilmSizeUnits_HORIZONTAL;
    if (size0 != nullptr) *size0 = kFilmWidthPixels;
    return A_Err_NONE;
}

AEGP_CameraSuite2 make_camera_suite() {
    AEGP_CameraSuite2 t{};
    AEGP_UNIMPLEMENTED(t, AEGP_GetCamera);
    t.AEGP_GetCameraType = GetCameraType;
    t.AEGP_GetDefaultCameraDistanceToImagePlane = GetDefaultCameraDistanceToImagePlane;
    t.AEGP_GetCameraFilmSize = GetCameraFilmSize;
    AEGP_UNIMPLEMENTED(t, AEGP_SetCameraFilmSize);
    return t;
}

A_Err GetLightType(AEGP_LayerH layerH, AEGP_LightType* type) {
    AEGP_ENTER("AEGP_GetLightType");
    NEED_LAYER(layerH);
    if (type == nullptr) return A_Err_PARAMETER;
    *type = layer->kind != LayerKind::Light ? static_cast<AEGP_LightType>(AEGP_LightType_NONE)
                                            : static_cast<AEGP_LightType>(layer->light.type);
    return A_Err_NONE;
}

A_Err SetLightType(AEGP_LayerH layerH, AEGP_LightType type) {
    AEGP_ENTER("AEGP_SetLightType");
    NEED_LAYER(layerH);
    if (layer->kind != LayerKind::Light || type > AEGP_LightType_AMBIENT) return A_Err_PARAMETER;
    layer->light.type = static_cast<LightType>(type);
    return A_Err_NONE;
}

AEGP_LightSuite2 make_light_suite() {
    AEGP_LightSuite2 t{};
    t.AEGP_GetLightType = GetLightType;
    t.AEGP_SetLightType = SetLightType;
    return t;
}

const AEGP_LayerSuite6 kLayerSuite = make_layer_suite();
const AEGP_CompSuite5 kCompSuite = make_comp_suite();
const AEGP_ItemSuite8 kItemSuite = make_item_suite();
const AEGP_CameraSuite2 kCameraSuite = make_camera_suite();
const AEGP_LightSuite2 kLightSuite = make_light_suite();

}  // namespace

void register_layer_suites(SuiteRegistry& registry) {
    registry.add(kAEGPLayerSuite, kAEGPLayerSuiteVersion6, &kLayerSuite);
    registry.add(kAEGPCompSuite, kAEGPCompSuiteVersion5, &kCompSuite);
    registry.add(kAEGPItemSuite, kAEGPItemSuiteVersion8, &kItemSuite);
    registry.add(kAEGPCameraSuite, kAEGPCameraSuiteVersion2, &kCameraSuite);
    registry.add(kAEGPLightSuite, kAEGPLightSuiteVersion2, &kLightSuite);
}

}  // namespace aegp
}  // namespace host
