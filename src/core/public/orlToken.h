// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TOKEN_H
#define ORL_TOKEN_H

#include "orlExport.h"
#include "orlRefCounted.h"
#include "orlStatus.h"
#include "orlString.h"

namespace ORL_0_81 {

/// A placeholder in a text: what it is called, how it is shown to people, and the value that a derived class
/// computes when it is asked.
///
/// The name is the complete text that is looked up and replaced, its delimiters included: what stands for
/// `{SHOT}` is called `{SHOT}`. Nothing here interprets either text, and two tokens with the same name are
/// different objects. An empty name is allowed, though no text can ask for it.
///
/// Held through SharedPtr. The count is not atomic, so a token stays on one thread at a time.
class ORL_CORE_EXPORT Token : public RefCountedST {
public:
    /// Copies both texts, each up to its first NUL. Neither may be null.
    Token(char const* name, char const* displayName);

    /// Copies both texts. The new object's count is 0, whatever the source's.
    Token(Token const& other);

    ~Token() override;

    /// Copies both texts; when memory fails the target keeps its own. The count stays as it is.
    /// Self-assignment does nothing.
    Token& operator=(Token const& other);

    /// Never null. Valid until the token is assigned to or destroyed.
    char const* getName() const;

    /// Never null. Valid until the token is assigned to or destroyed.
    char const* getDisplayName() const;

    /// Fills `value` with what stands for the token now.
    ///
    /// \returns the failure that the caller is to hear of. What `value` then holds is used all the same.
    virtual Status getValue(String& value) = 0;

private:
    class Imp;

    Imp* m_imp; // owned, never null
};

} // namespace ORL_0_81

#endif // ORL_TOKEN_H
