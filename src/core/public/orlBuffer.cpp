// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlBuffer.h"

#include "orlPlatform.h"

#include <cstdlib>
#include <cstring>

namespace ORL_0_81 {

// Buffer

Buffer::Buffer(unsigned long size) : m_size(0), m_data(nullptr), m_ownsMemory(false) { takeNew(size); }

Buffer::Buffer(Buffer const& other) : m_size(0), m_data(nullptr), m_ownsMemory(false) { copyFrom(other); }

Buffer::Buffer(Buffer&& other) noexcept
    : m_size(other.m_size), m_data(other.m_data), m_ownsMemory(other.m_ownsMemory) {
    other.m_size = 0;
    other.m_data = nullptr;
}

Buffer::~Buffer() { freeOwned(); }

Buffer& Buffer::operator=(Buffer const& other) {
    if (this != &other) {
        freeOwned();
        copyFrom(other);
    }
    return *this;
}

Buffer& Buffer::operator=(Buffer&& other) noexcept {
    if (this != &other) {
        freeOwned();
        m_size = other.m_size;
        m_data = other.m_data;
        m_ownsMemory = other.m_ownsMemory;
        other.m_size = 0;
        other.m_data = nullptr;
    }
    return *this;
}

void Buffer::allocate(unsigned long size) {
    freeOwned();
    takeNew(size);
}

void Buffer::setBuffer(void* data, unsigned long size) {
    freeOwned();
    m_data = static_cast<unsigned char*>(data);
    m_size = size;
    m_ownsMemory = false;
}

void Buffer::copyFrom(Buffer const& other) {
    takeNew(other.m_size);
    if (other.m_data && m_data) {
        std::memcpy(m_data, other.m_data, m_size);
    }
}

void Buffer::takeNew(unsigned long size) {
    m_data = static_cast<unsigned char*>(std::malloc(size));
    m_size = size;
    m_ownsMemory = true;
}

void Buffer::freeOwned() {
    if (m_ownsMemory) {
        std::free(m_data);
    }
}

// SecureBuffer

SecureBuffer::SecureBuffer(unsigned long size) : Buffer(size) { lock(); }

SecureBuffer::SecureBuffer(SecureBuffer const& other) : Buffer(other) { lock(); }

// NOLINTNEXTLINE(performance-move-constructor-init): a deep copy on purpose
SecureBuffer::SecureBuffer(SecureBuffer&& other) noexcept : Buffer(static_cast<Buffer const&>(other)) {}

SecureBuffer::~SecureBuffer() {
    if (m_data && m_ownsMemory) {
        wipeOwned();
        Platform::munlock(m_data, m_size);
    }
}

SecureBuffer& SecureBuffer::operator=(SecureBuffer const& other) {
    if (this != &other) {
        wipeOwned();
        Platform::munlock(m_data, m_size);
        freeOwned();
        copyFrom(other);
        lock();
    }
    return *this;
}

SecureBuffer& SecureBuffer::operator=(SecureBuffer&& other) noexcept {
    if (this != &other) {
        wipeOwned();
        freeOwned();
        copyFrom(other);
    }
    return *this;
}

void SecureBuffer::allocate(unsigned long size) {
    wipeOwned();
    Buffer::allocate(size);
    lock();
}

void SecureBuffer::setBuffer(void* data, unsigned long size) {
    wipeOwned();
    Buffer::setBuffer(data, size);
    lock();
}

void SecureBuffer::wipeOwned() {
    if (m_ownsMemory) {
        Platform::memset_s(m_data, 0, m_size);
    }
}

void SecureBuffer::lock() { Platform::mlock(m_data, m_size); }

} // namespace ORL_0_81
