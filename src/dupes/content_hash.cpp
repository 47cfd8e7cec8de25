#include "dupes/content_hash.h"

#include "platform/hashes.h"

namespace vantrel {

namespace {

std::string TextOf(Crc16& hash) {
    return std::to_string(static_cast<std::int16_t>(hash.Value()));
}
std::string TextOf(Crc32& hash) {
    return std::to_string(static_cast<std::int32_t>(hash.Value()));
}
std::string TextOf(Md5& hash) {
    return HexText(hash.Finish());
}

template <typename Hash>
class HashOf : public ContentHash {
  public:
    void Add(const void* bytes, std::size_t size) override { hash_.Add(bytes, size); }
    std::string Text() override { return TextOf(hash_); }
    std::unique_ptr<ContentHash> Clone() const override { return std::make_unique<HashOf>(*this); }

  private:
    Hash hash_;
};

}  // namespace

ContentHashMaker HashMakerFor(HashMethod method) {
    switch (method) {
        case HashMethod::Crc32:
            return [] { return std::make_unique<HashOf<Crc32>>(); };
        case HashMethod::Md5:
            return [] { return std::make_unique<HashOf<Md5>>(); };
        case HashMethod::Crc16:
            break;
    }
    return [] { return std::make_unique<HashOf<Crc16>>(); };
}

}  // namespace vantrel
