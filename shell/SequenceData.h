#pragma once

// Per-instance data of the effect: a placeholder that holds nothing (one word, always 0). No
// command attaches it to an instance; it exists with its serialized form for completeness.

#include "AEConfig.h"
#include "AE_Effect.h"

typedef PF_Handle SerializedSequenceData;

class SequenceData {
public:
    SequenceData() : _reserved(0) {}
    SequenceData(const SequenceData& /*other*/) : _reserved(0) {}
    explicit SequenceData(SerializedSequenceData /*flat*/) : _reserved(0) {}
    virtual ~SequenceData();

    A_long reserved() const { return _reserved; }

    // A new 4-byte host handle holding 0; null when the host has no memory.
    SerializedSequenceData serialize(PF_InData* in_data) const;

private:
    A_long _reserved;
};
