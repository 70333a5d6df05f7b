#include "host/technologies/dbf/cdx/TagCursor.h"

namespace zu::dbf::cdx {

void TagCursor::Load() {
    page_.Unpack(path_.file().Page(path_.leaf()), path_.leaf(), path_.shape());
}

// Leaves without entries are legal between others: deletions may leave them.
bool TagCursor::ForwardToEntry() {
    while (index_ >= page_.size()) {
        if (!path_.ToNext()) return false;
        Load();
        index_ = 0;
    }
    return true;
}

bool TagCursor::BackToEntry() {
    while (page_.size() == 0) {
        if (!path_.ToPrevious()) return false;
        Load();
    }
    index_ = page_.size() - 1;
    return true;
}

bool TagCursor::First() {
    path_.ToFirst();
    Load();
    index_ = 0;
    return ForwardToEntry();
}

bool TagCursor::Last() {
    path_.ToLast();
    Load();
    return BackToEntry();
}

bool TagCursor::Seek(const std::byte* key, std::uint32_t record) {
    path_.To(key, record);
    Load();
    index_ = page_.LowerBound(key, record);
    return ForwardToEntry();
}

bool TagCursor::SeekBefore(const std::byte* key, std::uint32_t record) {
    path_.To(key, record);
    Load();
    index_ = page_.LowerBound(key, record);
    return Previous();
}

bool TagCursor::Next() {
    ++index_;
    return ForwardToEntry();
}

bool TagCursor::Previous() {
    if (index_ > 0) {
        --index_;
        return true;
    }
    if (!path_.ToPrevious()) return false;
    Load();
    return BackToEntry();
}

}  // namespace zu::dbf::cdx
