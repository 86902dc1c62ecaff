#pragma once

#include <QtGlobal>

/// The generated tables; see tools/generate_emoji_data.py.
namespace emoji {

/// A node of the trie over the code points of all emoji without U+FE0F. The children of a node stand side by
/// side, ordered by code point. Node 0 is the root and stands for "none" everywhere else.
struct TrieNode
{
    quint32 codePoint;
    quint16 firstChild;
    qint16 emoji; ///< index of the emoji that ends here, -1 if none does
    quint8 childCount;
    bool bare; ///< false: an emoji only when U+FE0F follows
};

/// A run of emoji of one subgroup.
struct Section
{
    int begin;
    int end; ///< index behind the last one
    const char *group;
    const char *subgroup;
    const char *names; ///< UTF-8, each ended by a zero
};

extern const quint64 listHash; ///< identifies the list of emoji; a picture file carries the same

/// Two steps from a code point below U+20000 to its node under the root: page, then low byte. Page 0 is
/// empty.
extern const quint8 rootPages[];
extern const quint16 rootNodes[][256];
extern const TrieNode nodes[];

extern const int emojiCount;
extern const char16_t textUnits[];  ///< the fully qualified texts, one behind the other
extern const quint16 textOffsets[]; ///< where each begins; one more than there are emoji

extern const Section sections[];
extern const int sectionCount;

} // namespace emoji
