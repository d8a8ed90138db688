// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TOKEN_RESOLVER_H
#define ORL_TOKEN_RESOLVER_H

#include "orlExport.h"
#include "orlList.h"
#include "orlRefCounted.h"
#include "orlSharedPtr.h"
#include "orlStatus.h"
#include "orlString.h"
#include "orlToken.h"
#include "orlTokenProducer.h"

namespace ORL_0_81 {

/// Replaces tokens in strings by their values.
///
///     SharedPtr<TokenResolver> const resolver = TokenResolver::create('{', '}');
///     resolver->add(shotTokens);
///     String path;
///     Status const status = resolver->resolve("/shows/{SHOW}/{SHOT}.exr", path);
///
/// A *token text* runs from an open character to the first close character behind it, both included, and may
/// hold further open characters. If a token has exactly that name, its value takes the place of the text. If
/// none has, the text stays, and the search goes on at the next open character, which may stand within it.
/// So in `{a{b}` the text `{b}` has its turn after `{a{b}`. One pass goes from left to right, and a value is
/// not searched again. A delimiter can't be escaped.
///
/// The two delimiters should differ: with equal ones each token text is that one character.
///
/// **The table.** All tokens of all producers stand in one table, which is made by the first resolve() or
/// getTokens(). add(), remove() and a TokenProducer::ChangeHint of a producer empty it, so that the next call
/// asks every producer again. As long as it is empty, every call does. Of two tokens with one name that of
/// the later producer wins, and the call that makes the table says kDuplicateTokenAdded; a producer that was
/// added twice collides with itself.
///
/// **Copies** share the tokens and the producers, and have a table of their own. The copy of a resolver whose
/// table is filled is *deaf*: no producer knows it, so its table stays as it is until its own add() or
/// remove(). The copy of one with an empty table gets known to the producers like any other when it makes its
/// table.
///
/// **Failure.** The first failure is kept and the work goes on, so that the output is complete even then.
/// A lack of memory throws `std::bad_alloc`; an output is then as it was.
///
/// **Thread safety.** None, and the count is not atomic: a resolver, its producers and its tokens stay on one
/// thread at a time. A producer that notifies from another thread must be kept apart from it by the caller.
///
/// **Cost.** resolve() is linear in the length of its texts; with a table that is filled it asks no producer,
/// and looks each token text up once by its hash, unless it has a length that no name has.
class ORL_CORE_EXPORT TokenResolver : public RefCountedST {
public:
    /// A new resolver without producers.
    static SharedPtr<TokenResolver> create(char open, char close);

    /// Without producers.
    TokenResolver(char open, char close);

    /// A copy, as told above. Its count is 0.
    TokenResolver(TokenResolver const& other);

    /// Lets no producer know it any longer, then releases producers and tokens.
    ~TokenResolver() override;

    /// Becomes a copy, as told above; its old producers know it no longer. The count stays as it is.
    /// Self-assignment does nothing. When memory fails it keeps its producers, but perhaps not its table.
    TokenResolver& operator=(TokenResolver const& other);

    /// \returns a copy.
    SharedPtr<TokenResolver> clone() const;

    /// Appends the producer, even if it is there already, and empties the table. A null one is not stored,
    /// but the table is emptied all the same.
    ///
    /// The resolver takes a share of the producer, and asks it only when it makes its table.
    ///
    /// \returns success.
    Status add(SharedPtr<TokenProducer> const& producer);

    /// Takes out the first entry of the producer and empties the table. Nothing happens for a null producer
    /// and for one that isn't here.
    ///
    /// If it was added more than once it stays, but its hints are not heard until the table is made anew.
    ///
    /// \returns success.
    Status remove(SharedPtr<TokenProducer> const& producer);

    /// Replaces the tokens in `input`.
    ///
    /// \param input any text.
    /// \param output receives the complete text, whatever the status; may be the same object as `input`.
    /// \returns success, or the first failure: of making the table (kDuplicateTokenAdded, or what a producer
    ///     returned), then of the tokens' getValue(), from left to right.
    Status resolve(String const& input, String& output) const;

    /// Appends all tokens to `tokens`.
    ///
    /// \param tokens is not cleared. The call that makes the table appends in the order of the producers,
    /// with
    ///     duplicates; later ones in no particular order, without.
    /// \returns success, or the first failure of making the table.
    Status getTokens(List<SharedPtr<Token>>& tokens) const;

private:
    class Imp;

    Imp* m_imp; // owned, never null
};

} // namespace ORL_0_81

#endif // ORL_TOKEN_RESOLVER_H
