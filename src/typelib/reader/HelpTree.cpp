#include "typelib/reader/HelpTree.h"

#include "typelib/reader/TypeLibLimits.h"

namespace vendrel::typelib {
namespace {

constexpr std::uint8_t kInnerNode = 0x80;

// Bits of a byte stream, the most significant first.
class BitReader {
 public:
  explicit BitReader(ByteStream& bytes) : mBytes(bytes) {}
  bool Next() {
    if (mLeft == 0) {
      mByte = mBytes.U8();
      mLeft = 8;
    }
    return (mByte >> --mLeft & 1) != 0;
  }

 private:
  ByteStream& mBytes;
  std::uint8_t mByte = 0;
  int mLeft = 0;
};

}  // namespace

HelpTree::HelpTree(ByteStream area) {
  mLongest = area.U16();
  const std::size_t length = area.U32();
  mTree = area.Part(area.Position(), length, "the help words");
  mTree.Cover(length);
}

// An inner node holds, big-endian, the place of its "0" child; the "1" child follows it. A string
// ends at the empty word.
std::string HelpTree::Decode(ByteStream bits) const {
  std::string text;
  BitReader reader(bits);
  ByteStream tree = mTree;
  for (int words = 0; words < kMaxHelpWords; ++words) {
    tree.Seek(0);
    // Every step costs a bit of the string except that into a leaf, so a circle runs dry.
    while ((tree.Peek() & kInnerNode) != 0) {
      tree.Skip(1);
      const std::size_t high = tree.U8();
      const std::size_t zero = high << 8 | tree.U8();
      if (!reader.Next()) tree.Seek(zero);
    }
    tree.Skip(1);
    const std::string_view word = tree.CharsToNul(mLongest + 1);
    if (word.empty()) return text;
    if (!text.empty()) text += ' ';
    text += word;
    if (text.size() > mLongest) throw DataError("a help string longer than the longest");
  }
  throw DataError("a help string without an end");
}

}  // namespace vendrel::typelib
