// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_VIDEO_BUFFER_H
#define ORL_VIDEO_BUFFER_H

#include "orlExport.h"
#include "orlRefCounted.h"
#include "orlSharedPtr.h"
#include "orlVideoBufferResolution.h"

namespace ORL_0_81 {

/// The memory of one image. Other libraries implement it, and nothing in this one calls it.
///
/// Held through SharedPtr; the count is thread-safe, the rest is as the implementation tells.
class ORL_CORE_EXPORT VideoBuffer : public RefCountedMT {
public:
    VideoBuffer();
    ~VideoBuffer() override;

    /// The form of the image.
    virtual VideoBufferResolution getResolution() const = 0;

    /// @{
    /// The first byte of the image, which the object owns.
    virtual void* getData() = 0;
    virtual void const* getData() const = 0;
    /// @}

    /// In bytes.
    virtual unsigned long getSize() const = 0;

    /// An independent copy.
    virtual SharedPtr<VideoBuffer> clone() const = 0;
};

} // namespace ORL_0_81

#endif // ORL_VIDEO_BUFFER_H
