#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/result_row.h"
#include "platform/locale/locale_formats.h"
#include "platform/text_pool.h"

namespace vantrel {

// One half of a difference below a sub-folder: of a file, or of a link without a counterpart to whatever.
// Blank where that side has no such object. Both halves are unknown where nothing may be concluded from them.
// The texts live in the pool of the CSubFolderDiffs that holds the record.
struct SubFolderRecord {
    std::string_view
        name;  // path below the sub-folder, as in "x/y.txt"; the same on both halves, empty when blank
    std::string_view realName;  // the same path as it stands on this side's disk; can differ in letter case
    Currency size;              // by the size rule of a scan
    FileTime lastWrite;         // UTC
    ResultType type = ResultType::None;  // Newer, Older, Orphan or Binary; None: blank or unknown
    // Of blank halves too: what would be made there is made in that place.
    Elsewhere elsewhere = Elsewhere::No;
    bool unknown = false;
    UnknownReason reason = UnknownReason::None;  // what is in the way on this side
    bool isLink = false;                         // the object itself is a symbolic link
    std::optional<Seen> seen{};  // of the object itself; nothing where it could not be looked at

    bool IsBlank() const { return type == ResultType::None && !unknown; }
};

// The texts shown for a record, made from its values; empty for a blank one.
std::string SizeText(const SubFolderRecord& record, const LocaleFormats& locale);
std::string DateText(const SubFolderRecord& record, const LocaleFormats& locale);

// A place in a tree that the comparison could not look into. What lies at it or below it is unknown on that
// side, so there are no records for it on either.
struct UnknownPlace {
    Side side = Side::Left;
    std::string path;  // below the sub-folder, in this side's real names; empty: the sub-folder itself
};

// What differs between the two sub-folders of one name. Record i of the left and record i of the right speak
// of the same file. Numbers of records here are from 1.
class CSubFolderDiffs {
  public:
    CSubFolderDiffs() = default;
    // `name` is the row's text, with its marker; `folder` is the left folder's full path. `texts` is a pool
    // that several of these objects may share.
    CSubFolderDiffs(std::string name, const std::string& folder,
                    std::shared_ptr<TextPool> texts = std::make_shared<TextPool>());

    const std::string& Name() const { return name_; }      // "\Sub", as the row shows it
    const std::string& Folder() const { return folder_; }  // of the left side, without a "/" at its end

    void AddUDTToArrayDiffOne(std::size_t number, const SubFolderRecord& record) {
        Put(Side::Left, number, record);
    }
    void AddUDTToArrayDiffTwo(std::size_t number, const SubFolderRecord& record) {
        Put(Side::Right, number, record);
    }
    const SubFolderRecord& GetUDTFromArrayDiffOne(std::size_t number) const {
        return Records(Side::Left).at(number - 1);
    }
    const SubFolderRecord& GetUDTFromArrayDiffTwo(std::size_t number) const {
        return Records(Side::Right).at(number - 1);
    }
    void RedimArrayDiffOne(std::size_t count) { records_[Side::Left].resize(count); }
    void RedimArrayDiffTwo(std::size_t count) { records_[Side::Right].resize(count); }
    std::size_t GetArrayDiffOneDimensions() const { return records_[Side::Left].size(); }
    std::size_t GetArrayDiffTwoDimensions() const { return records_[Side::Right].size(); }

    // The records of one side, from index 0; both sides have the same number.
    const std::vector<SubFolderRecord>& Records(Side side) const { return records_[side]; }
    // Adds both halves of one difference; the texts are copied.
    void AddPair(const PerSide<SubFolderRecord>& pair);

    // Places that could not be looked into: nothing may be concluded from what has no record there.
    const std::vector<UnknownPlace>& UnknownPlaces() const { return unknown_; }
    void AddUnknownPlace(UnknownPlace place) { unknown_.push_back(std::move(place)); }

    // The pool that the records' texts live in, for rows that are to outlive this object.
    std::shared_ptr<const TextPool> Texts() const { return texts_; }

  private:
    void Put(Side side, std::size_t number, const SubFolderRecord& record);
    SubFolderRecord Kept(const SubFolderRecord& record);

    std::string name_;
    std::string folder_;
    PerSide<std::vector<SubFolderRecord>> records_;
    std::vector<UnknownPlace> unknown_;
    std::shared_ptr<TextPool> texts_ = std::make_shared<TextPool>();
};

// The sub-folder pairs that differ, or that are not wholly known, in the order of their rows.
class SubFolderDiffsCollection {
  public:
    std::size_t Count() const { return items_.size(); }
    bool IsEmpty() const { return items_.empty(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

    // A second one of the same name is left out.
    void Add(CSubFolderDiffs diffs);
    // By the row's text, with or without its marker; letter case is ignored where no name is equal. nullptr
    // where there is none.
    const CSubFolderDiffs* Find(std::string_view name) const;
    void Clear();

  private:
    std::vector<CSubFolderDiffs> items_;
    std::vector<std::pair<std::string, std::size_t>> index_;  // folded name without marker, sorted
};

}  // namespace vantrel
