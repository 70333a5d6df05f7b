#include "MemoryEdit.h"

#include <string>

#include "portable/error/Error.h"

namespace zu::test {

MemoryEdit::MemoryEdit(MemoryData& data, std::uint32_t record)
    : data_(data), record_(record), values_(data.fields.size()), set_(data.fields.size()) {
    if (record == 0) return;
    values_ = data.rows.at(record - 1);
    deleted_ = data.deleted.at(record - 1);
}

void MemoryEdit::Set(std::size_t field, const technologies::Value& value) {
    const technologies::FieldDescription& description = data_.fields.at(field);
    if (value.text.size() > static_cast<std::size_t>(description.size) &&
        value.kind == technologies::Value::Kind::Text)
        throw Error(ErrorKind::Overflow, "too long for field " + description.name);
    values_[field] = value;
    set_[field] = true;
    changed_ = true;
}

void MemoryEdit::SetDeleted(bool deleted) {
    marked_ = marked_ || deleted != deleted_;
    deleted_ = deleted;
}

bool MemoryEdit::Save() {
    if (data_.onSave && !data_.onSave()) return false;
    ++data_.saves;
    if (record_ == 0) {
        data_.rows.push_back(values_);
        data_.deleted.push_back(deleted_);
        record_ = static_cast<std::uint32_t>(data_.rows.size());
    } else {
        for (std::size_t i = 0; i < set_.size(); ++i)
            if (set_[i]) data_.rows.at(record_ - 1)[i] = values_[i];
        if (marked_) data_.deleted.at(record_ - 1) = deleted_;
    }
    changed_ = marked_ = false;
    return true;
}

}  // namespace zu::test
