#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/expression/Program.h"
#include "host/technologies/Table.h"
#include "host/technologies/dbf/cdx/IndexContext.h"
#include "host/technologies/dbf/cdx/IndexUpdate.h"
#include "host/technologies/dbf/cdx/NewKeys.h"
#include "portable/files/File.h"

namespace zu::dbf::cdx {

/// The tags of a production index as its table sees them.
///
/// A tag is used only when its expressions compile, its collation is plain byte order, its pages are sound
/// where they are touched and a few records are found under the keys that they have now. Any other tag stays
/// in the list with `usable == false` and the reason, so that a selection can fall back to reading all
/// records.
class IndexSet {
public:
    /// Takes the next record number; answers false to stop.
    using Take = std::function<bool(std::uint32_t)>;

    /// Never fails for what the file holds: a file that is no index has no tags and a warning.
    /// Errors of the file itself (IoFailure) come through.
    static std::unique_ptr<IndexSet> Open(std::unique_ptr<files::File> file, const IndexContext& context);
    ~IndexSet();

    /// All tags, in the order in which their headers lie in the file (the order of their making).
    const std::vector<technologies::IndexDescription>& descriptions() const noexcept;
    /// The tag of this name, without regard to case.
    std::optional<std::size_t> Find(std::string_view name) const noexcept;
    /// The usable tag named like the table (the name that our own index building gives), else the first
    /// usable one in the order of `descriptions()`.
    std::optional<std::size_t> Default() const noexcept;

    /// Hands the record numbers to `take` in the order of the index. Records that have no key (UNIQUE, FOR)
    /// do not come. Unsupported when the tag is not usable; Damaged when the walk meets a fault, after which
    /// the tag is not usable any more.
    void Walk(std::size_t index, const Take& take);

    /// Hands the records whose key meets `criteria` to `take`, in the order of the index. The criteria stand
    /// for the parts of the description in order. An empty text for the first part restricts nothing; a value
    /// that cannot stand in the key at all (a text too long, characters that the code page lacks) matches no
    /// record. TypeMismatch for values of a wrong kind, InvalidArgument for more criteria than parts; else as
    /// `Walk`.
    void Seek(std::size_t index, const std::vector<technologies::KeyCriterion>& criteria, const Take& take);

    /// As Seek, for callers without the index lock: makes no call of the system where the file is in memory,
    /// and answers true only when what `take` has got is certain, that is, when
    /// - nobody has changed the file since it was read last, and no change was under way or left by a process
    /// that
    ///   died, neither before nor after the search;
    /// - one page decides it, because it holds the entries next to the bounds as well, and the page is the
    /// same after
    ///   the search: so half a change of a program that knows no mark cannot show;
    /// - the records really have the keys that were searched for.
    /// False: what `take` has got means nothing, and Seek must be asked. Never fails for what is in the file.
    bool SeekUnlocked(std::size_t index, const std::vector<technologies::KeyCriterion>& criteria,
                      const Take& take);
    /// The mark of changes (transaction/ChangeMark.h) is clear, so the journal has nothing to undo. False as
    /// well when this cannot be told without a call of the system.
    bool isUnmarked() const noexcept;

    /// True when a usable tag narrows `condition`: `records` then holds all records that may meet it, in
    /// ascending order (a superset of the matches, deleted ones included). False: read all records.
    bool Candidates(const expression::Program& condition, std::vector<std::uint32_t>& records);

    /// Takes the file and the table as they are now: to be called when another process may have changed them.
    /// Descriptions are made anew; a tag that was not usable may be so now, and the other way round.
    void Refresh();

    /// No tag has been found wanting.
    bool areUsable() const noexcept;

    /// Another process has changed the file since it was read last.
    bool IsOutdated();

    /// Begins the index's share in a change of records. The caller holds the index lock and has refreshed
    /// what was outdated. Errors: those of IndexUpdate.
    std::unique_ptr<IndexUpdate> BeginUpdate(StaleTags staleTags, transaction::ChangeSet& changes);
    /// Unsupported as of IndexUpdate, before anything is written.
    void RequireUpdatable(StaleTags staleTags) const;
    /// Gathers the keys of new records; see IndexUpdate::Add. It must not outlive the next Refresh.
    std::unique_ptr<NewKeys> CollectKeys();
    /// A tag refuses equal keys, so each record must be compared with the index before it is written.
    bool refusesEqualKeys() const noexcept;
    /// The change that was begun last is in the file now.
    void TakeOwnChange();

    /// The file that the tags are in, for its locks.
    files::File& file() noexcept;

    /// What had to be tolerated, UTF-8, one text for each tag that is not used.
    std::vector<std::string> warnings() const;

private:
    class Implementation;
    explicit IndexSet(std::unique_ptr<Implementation> implementation) noexcept;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace zu::dbf::cdx
