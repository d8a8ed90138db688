// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_STRING_H
#define ORL_STRING_H

#include "orlExport.h"

namespace ORL_0_81 {

namespace PtrInternal {
struct PtrCntrlBlk;
}

/// The text type of every public interface: a string of bytes, with the operations of the standard string.
///
/// No encoding is assumed and a character is one `char`; text is UTF-8 where it is text at all. A String is
/// two pointers that lead to a hidden, counted standard string, so that text crosses the library's boundary
/// without sharing the standard library. Copies share the hidden string until one of them is changed.
///
/// Every operation has the meaning of the standard string's operation of the same name. What differs:
///
/// **Empty representation.** A default-constructed, cleared or moved-from String, and one made from an empty
/// text, has no hidden string at all and takes no memory. It reads like any empty string, its capacity() is
/// 0. (A String that became empty otherwise, by erase() for instance, keeps its hidden string. Both compare
/// equal.) On the empty representation a changing operation just takes the value that is handed to it,
/// where it can by sharing it.
///
/// **Copy on write.** A changing operation on any other String first takes the hidden string out of the
/// object, or a copy of it if it is shared, works on it, and puts it back. Two things follow:
/// - While the operation works the object is empty, and so is an argument that is the same object:
///   `s.append(s)`, `s += s` and `s.insert(pos, s)` change nothing, `s.assign(s)` empties `s`, and
///   `s.replace(pos, len, s)` removes the range. A mere copy of `s` is no such argument.
/// - An operation that throws leaves its object empty, with the value gone. Other String objects that shared
///   it keep it. Only when the copy of a shared hidden string fails is the object left as it was.
///
/// **Failure.** A position beyond the end throws `std::out_of_range`, a length beyond max_size()
/// `std::length_error`, and a lack of memory `std::bad_alloc`. What the empty representation throws names the
/// operation, as in "In String::at(pos)". When there is no memory for the few bytes that count a hidden
/// string just made, the process ends. Operations that are told to be noexcept never fail.
///
/// **Null pointers.** A null `char const*` is an empty text for the two constructors that take one, and for
/// changing operations whose receiver is in the empty representation or, for `operator=(char const*)`,
/// shared. Anywhere else it is a caller's fault.
///
/// **Thread safety.** Copies of one String can be used on different threads without a lock. One String object
/// is not safe when one of several concurrent accesses is non-const; remember that the non-const at(),
/// operator[], front(), back(), begin() and end() count as changes.
///
/// **Cost.** Copying, moving and destroying never copy text; reading never allocates.
///
/// Positions and lengths count bytes.
class ORL_CORE_EXPORT String {
public:
    /// As a length: all the rest. As the result of a search: not found.
    static constexpr unsigned long npos = ~0UL;

    /// \name Construction and lifetime
    /// @{

    /// The empty representation. Allocates nothing.
    String() noexcept;

    /// Shares the other's hidden string.
    String(String const& other) noexcept;

    /// Takes the other's value and leaves it empty.
    String(String&& other) noexcept;

    /// The text up to its first NUL. A null or an empty one gives the empty representation.
    String(char const* s);

    /// Exactly `n` bytes, NULs included. A null `s`, or an `n` of 0, gives the empty representation.
    String(char const* s, unsigned long n);

    /// `n` times the character. An `n` of 0 gives the empty representation.
    String(unsigned long n, char c);

    /// A new string: at most `len` bytes of `str` from `pos` on. Throws if `pos` is beyond the end of `str`:
    /// for the empty representation with "In String::String(str,pos,len)".
    String(String const& str, unsigned long pos, unsigned long len = npos);

    ~String();

    /// Shares the other's hidden string, unless both do so already.
    String& operator=(String const& other) noexcept;

    /// Takes the other's value and leaves it empty. Self-assignment does nothing.
    String& operator=(String&& other) noexcept;

    /// Assigns in place if this object is the sole owner of a hidden string, else makes a new value. Only in
    /// the second case may `s` be null.
    String& operator=(char const* s);

    /// Becomes a string of length 1, also for a NUL.
    String& operator=(char c);

    /// Exchanges the values; no count changes.
    void swap(String& other) noexcept;

    /// @}
    /// \name Size
    /// @{

    unsigned long size() const noexcept;
    unsigned long length() const noexcept;
    bool empty() const noexcept;

    /// How long the hidden string can become without a new allocation; 0 without a hidden string.
    unsigned long capacity() const noexcept;

    /// The hidden string's own bound.
    unsigned long max_size() const noexcept;

    /// @}
    /// \name Text
    /// @{

    /// The bytes with a NUL behind them, never null. Valid until the String is next changed or destroyed.
    char const* c_str() const noexcept;
    char const* data() const noexcept;
    char const* asChar() const noexcept;

    /// @}
    /// \name Comparison
    /// @{

    /// Byte by byte, unsigned. The result is that of the first bytes that differ, as `memcmp` gives it; if
    /// there are none, it is -1, 0 or 1 by length.
    int compare(String const& str) const noexcept;

    /// As the hidden string compares: by sign the same, but the number is its own. A `pos` beyond the end
    /// throws; a `len` or `sublen` beyond it means all the rest.
    int compare(unsigned long pos, unsigned long len, String const& str) const;
    int compare(unsigned long pos, unsigned long len, String const& str, unsigned long subpos,
                unsigned long sublen = npos) const;
    int compare(char const* s) const;
    int compare(unsigned long pos, unsigned long len, char const* s) const;
    int compare(unsigned long pos, unsigned long len, char const* s, unsigned long n) const;

    bool operator==(String const& other) const noexcept;
    bool operator!=(String const& other) const noexcept;
    bool operator<(String const& other) const noexcept;
    bool operator>(String const& other) const noexcept;
    bool operator<=(String const& other) const noexcept;
    bool operator>=(String const& other) const noexcept;

    /// @}
    /// \name Search
    /// @{

    /// The position of the first (`find`) or last (`rfind`) occurrence of a text, or of a character that is
    /// one of a set or none of it; npos when there is none. Forward searches begin at `pos`, backward ones
    /// end with what begins there. An empty needle is found at any `pos` up to the length.
    unsigned long find(String const& str, unsigned long pos = 0) const noexcept;
    unsigned long find(char const* s, unsigned long pos = 0) const;
    unsigned long find(char const* s, unsigned long pos, unsigned long n) const;
    unsigned long find(char c, unsigned long pos = 0) const noexcept;

    unsigned long rfind(String const& str, unsigned long pos = npos) const noexcept;
    unsigned long rfind(char const* s, unsigned long pos = npos) const;
    unsigned long rfind(char const* s, unsigned long pos, unsigned long n) const;
    unsigned long rfind(char c, unsigned long pos = npos) const noexcept;

    unsigned long find_first_of(String const& str, unsigned long pos = 0) const noexcept;
    unsigned long find_first_of(char const* s, unsigned long pos = 0) const;
    unsigned long find_first_of(char const* s, unsigned long pos, unsigned long n) const;
    unsigned long find_first_of(char c, unsigned long pos = 0) const noexcept;

    unsigned long find_last_of(String const& str, unsigned long pos = npos) const noexcept;
    unsigned long find_last_of(char const* s, unsigned long pos = npos) const;
    unsigned long find_last_of(char const* s, unsigned long pos, unsigned long n) const;
    unsigned long find_last_of(char c, unsigned long pos = npos) const noexcept;

    unsigned long find_first_not_of(String const& str, unsigned long pos = 0) const noexcept;
    unsigned long find_first_not_of(char const* s, unsigned long pos = 0) const;
    unsigned long find_first_not_of(char const* s, unsigned long pos, unsigned long n) const;
    unsigned long find_first_not_of(char c, unsigned long pos = 0) const noexcept;

    unsigned long find_last_not_of(String const& str, unsigned long pos = npos) const noexcept;
    unsigned long find_last_not_of(char const* s, unsigned long pos = npos) const;
    unsigned long find_last_not_of(char const* s, unsigned long pos, unsigned long n) const;
    unsigned long find_last_not_of(char c, unsigned long pos = npos) const noexcept;

    /// @}
    /// \name Extraction
    /// @{

    /// Writes at most `len` bytes from `pos` on to `s`, without a NUL behind them.
    ///
    /// \returns the number of bytes written. Throws if `pos` is beyond the end.
    unsigned long copy(char* s, unsigned long len, unsigned long pos = 0) const;

    /// A new String from at most `len` bytes from `pos` on. Goes through a C text: the result stops before
    /// the first NUL, and an empty one is the empty representation. Throws if `pos` is beyond the end.
    String substr(unsigned long pos = 0, unsigned long len = npos) const;

    /// @}
    /// \name Elements, for reading
    /// @{

    /// Only at() checks: it throws for a position that is not below the length, for the empty representation
    /// with "In String::at(pos)". The others must not be called on an empty String; operator[] may also be
    /// asked for the NUL at the end of any other.
    char const& at(unsigned long pos) const;
    char const& operator[](unsigned long pos) const;
    char const& front() const;
    char const& back() const;

    /// @}
    /// \name Iterators, for reading
    /// @{

    /// Valid until the String is next changed or destroyed. All are null for the empty representation, so
    /// that a loop over it does nothing, but cbegin(), which must not be called on an empty String.
    char const* begin() const noexcept;
    char const* end() const noexcept;
    char const* cbegin() const;
    char const* cend() const noexcept;

    /// @}
    /// \name Elements and iterators, for writing
    /// @{

    /// The object becomes the sole owner of its hidden string first, so that what these give may be written
    /// through; it stays valid until the String is next copied, changed or destroyed. at() throws as above,
    /// and then leaves the object empty; begin() and end() give null for the empty representation, and the
    /// others must not be called on an empty String.
    char& at(unsigned long pos);
    char& operator[](unsigned long pos);
    char& front();
    char& back();
    char* begin();
    char* end();

    /// @}
    /// \name Append
    /// @{

    String& append(String const& str);

    /// Appends at most `len` bytes of `str` from `pos` on.
    ///
    /// On the empty representation `len` stands for the position as well and `pos` is not looked at: it takes
    /// `String(str, len, len)`, unlike the matching assign(). Callers rely on it.
    String& append(String const& str, unsigned long pos, unsigned long len = npos);

    String& append(char const* s);
    String& append(char const* s, unsigned long n);
    String& append(unsigned long n, char c);
    void push_back(char c);

    /// Like append(), but does not even detach when `str` is in the empty representation.
    String& operator+=(String const& str);
    String& operator+=(char const* s);
    String& operator+=(char c);

    /// @}
    /// \name Assign
    /// @{

    /// Replaces the value within the hidden string. Only the empty representation shares `str`.
    String& assign(String const& str);
    String& assign(String const& str, unsigned long pos, unsigned long len = npos);
    String& assign(char const* s);
    String& assign(char const* s, unsigned long n);
    String& assign(unsigned long n, char c);

    /// @}
    /// \name Insert
    /// @{

    /// Puts the text before the byte at `pos`, which may be the length. On the empty representation only a
    /// `pos` of 0 is possible; any other throws with a text that names the operation.
    String& insert(unsigned long pos, String const& str);
    String& insert(unsigned long pos, String const& str, unsigned long subpos, unsigned long sublen = npos);
    String& insert(unsigned long pos, char const* s);
    String& insert(unsigned long pos, char const* s, unsigned long n);
    String& insert(unsigned long pos, unsigned long n, char c);

    /// @}
    /// \name Replace
    /// @{

    /// Puts the text in the place of at most `len` bytes from `pos` on. The empty representation behaves as
    /// in insert(), whatever `len`.
    String& replace(unsigned long pos, unsigned long len, String const& str);
    String& replace(unsigned long pos, unsigned long len, String const& str, unsigned long subpos,
                    unsigned long sublen = npos);
    String& replace(unsigned long pos, unsigned long len, char const* s);
    String& replace(unsigned long pos, unsigned long len, char const* s, unsigned long n);
    String& replace(unsigned long pos, unsigned long len, unsigned long n, char c);

    /// @}
    /// \name Erase and size
    /// @{

    /// Removes at most `len` bytes from `pos` on. Throws if `pos` is beyond the end.
    String& erase(unsigned long pos = 0, unsigned long len = npos);

    /// Must not be called on an empty String.
    void pop_back();

    /// Makes room for `n` bytes. With 0, nothing happens to the empty representation.
    void reserve(unsigned long n = 0);

    /// Cuts the text to `n` bytes, or fills it up with NULs or the given character. With 0, nothing happens
    /// to the empty representation.
    void resize(unsigned long n);
    void resize(unsigned long n, char c);

    /// Is `reserve(0)` of the hidden string. The standard took that for a request to give back room until C++17, and
    /// takes it for none since; so do the libraries.
    void shrink_to_fit();

    /// Becomes the empty representation. Copies nothing, even if the hidden string is shared.
    void clear() noexcept;

    /// @}

private:
    class Imp; // the operations on the two fields, private to the source

    static unsigned long const max_size_value;

    void* m_pointee;                      // the hidden string, null in the empty representation
    PtrInternal::PtrCntrlBlk* m_cntrlBlk; // counts the String objects that share it; null exactly with it
};

/// Exchanges the values; no count changes.
ORL_CORE_EXPORT void swap(String& left, String& right) noexcept;

/// \name Comparison with a C text, which must not be null
/// @{

ORL_CORE_EXPORT bool operator==(char const* left, String const& right);
ORL_CORE_EXPORT bool operator!=(char const* left, String const& right);
ORL_CORE_EXPORT bool operator<(char const* left, String const& right);
ORL_CORE_EXPORT bool operator>(char const* left, String const& right);
ORL_CORE_EXPORT bool operator<=(char const* left, String const& right);
ORL_CORE_EXPORT bool operator>=(char const* left, String const& right);

ORL_CORE_EXPORT bool operator==(String const& left, char const* right);
ORL_CORE_EXPORT bool operator!=(String const& left, char const* right);
ORL_CORE_EXPORT bool operator<(String const& left, char const* right);
ORL_CORE_EXPORT bool operator>(String const& left, char const* right);
ORL_CORE_EXPORT bool operator<=(String const& left, char const* right);
ORL_CORE_EXPORT bool operator>=(String const& left, char const* right);

/// @}
/// \name Concatenation
/// @{

/// The left operand as a String, then the matching `operator+=`: what stands on the right of an empty left
/// operand is shared.
ORL_CORE_EXPORT String operator+(String const& left, String const& right);
ORL_CORE_EXPORT String operator+(String const& left, char const* right);
ORL_CORE_EXPORT String operator+(String const& left, char right);
ORL_CORE_EXPORT String operator+(char const* left, String const& right);
ORL_CORE_EXPORT String operator+(char left, String const& right);

/// @}

} // namespace ORL_0_81

#endif // ORL_STRING_H
