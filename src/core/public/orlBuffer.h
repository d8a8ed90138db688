// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_BUFFER_H
#define ORL_BUFFER_H

#include "orlExport.h"

namespace ORL_0_81 {

/// A block of bytes that the object allocated itself, or that somebody else owns.
///
/// Memory comes from `malloc`, uncleared, and goes back through `free`. Nothing is checked and nothing is
/// reported: an allocation that fails leaves a null block with the size that was asked for.
///
/// A Buffer is used by one thread at a time.
class ORL_CORE_EXPORT Buffer {
public:
    /// Allocates and owns `size` bytes; 0 is allowed.
    explicit Buffer(unsigned long size);

    /// A deep copy, which owns its block even if the source does not.
    Buffer(Buffer const& other);

    /// Takes block, size and ownership. The source is left with a null block of size 0.
    Buffer(Buffer&& other) noexcept;

    virtual ~Buffer();

    /// Frees what it owns and makes a deep copy. Self-assignment does nothing.
    Buffer& operator=(Buffer const& other);

    /// Frees what it owns and takes the source's, as the move constructor does. Self-assignment does nothing.
    Buffer& operator=(Buffer&& other) noexcept;

    /// Frees what it owns, then allocates and owns `size` bytes. The content is lost.
    virtual void allocate(unsigned long size);

    /// Frees what it owns, then looks at a block of the caller's, who keeps it alive for as long.
    virtual void setBuffer(void* data, unsigned long size);

    /// @{
    /// The block, or null.
    void* get() { return m_data; }
    void const* get() const { return m_data; }
    unsigned char* getBytes() { return m_data; }
    unsigned char const* getBytes() const { return m_data; }
    /// @}

    /// In bytes.
    unsigned long getSize() const { return m_size; }

    /// True when the object frees the block.
    bool ownsMemory() const { return m_ownsMemory; }

protected:
    /// Makes an owned copy of the other's block, over whatever stands here, which must have been freed.
    void copyFrom(Buffer const& other);

    /// Takes an own block of `size` bytes, over whatever stands here, which must have been freed.
    void takeNew(unsigned long size);

    /// Frees the block if it is owned. The fields keep their values.
    void freeOwned();

    unsigned long m_size;  ///< In bytes.
    unsigned char* m_data; ///< The block, or null.
    bool m_ownsMemory;     ///< Whether the destructor frees the block.
};

/// A Buffer for what must not leak: its memory is kept out of the swap space as far as the system allows, and
/// what it owns is wiped before it is freed.
///
/// Which operation locks, unlocks and wipes is not symmetric, and callers may rely on it as it stands:
/// - the destructor and the copy assignment unlock; allocate(), setBuffer() and the move assignment do not;
/// - both moves make deep copies, lock nothing and leave their source as it is;
/// - a block of somebody else's is locked by setBuffer(), and never unlocked by the destructor nor wiped.
///
/// A system call that fails, for a process at its limit of locked memory, goes unnoticed.
class ORL_CORE_EXPORT SecureBuffer : public Buffer {
public:
    /// As Buffer, and locks.
    explicit SecureBuffer(unsigned long size);

    /// A deep copy, locked.
    SecureBuffer(SecureBuffer const& other);

    /// A deep copy, not locked. The source keeps what it has.
    SecureBuffer(SecureBuffer&& other) noexcept;

    /// Wipes and unlocks what it owns, then frees it. A block of somebody else's stays as it is, and locked.
    ~SecureBuffer() override;

    /// Wipes what it owns, unlocks the old block whoever owns it, frees what it owns, makes a deep copy and
    /// locks it. Self-assignment does nothing.
    SecureBuffer& operator=(SecureBuffer const& other);

    /// Wipes and frees what it owns, then makes a deep copy, not locked. The source keeps what it has.
    /// Self-assignment does nothing.
    SecureBuffer& operator=(SecureBuffer&& other) noexcept;

    /// Wipes and frees what it owns, allocates and locks.
    void allocate(unsigned long size) override;

    /// Wipes and frees what it owns, looks at the caller's block and locks it.
    void setBuffer(void* data, unsigned long size) override;

private:
    void wipeOwned();
    void lock();
};

} // namespace ORL_0_81

#endif // ORL_BUFFER_H
