// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef PLACE_H
#define PLACE_H

#include <cstring>
#include <new>
#include <utility>

/// Room for one object whose beginning and end the test decides, so that an object can be left without a
/// destructor, or be followed by another at the same address.
///
/// What ends leaves nonsense behind: whoever still reaches for it does not find what was there.
template <class T>
class Place {
public:
    Place() { scribble(); }
    Place(Place const&) = delete;
    Place& operator=(Place const&) = delete;
    ~Place() = default; // an object that is still there is abandoned

    template <class... Arguments>
    T& begin(Arguments&&... arguments) {
        m_object = new (m_room) T(std::forward<Arguments>(arguments)...);
        return *m_object;
    }

    T& get() { return *m_object; }

    void end() {
        m_object->~T();
        scribble();
    }

private:
    void scribble() { std::memset(m_room, 0xDB, sizeof m_room); }

    alignas(T) unsigned char m_room[sizeof(T)];
    T* m_object = nullptr;
};

#endif // PLACE_H
