#include "portable/textio/BlockWriter.h"

#include <span>

namespace zu::textio {

void BlockWriter::Flush() {
    const std::span content(buffer_.view());
    file_->WriteAt(offset_, std::as_bytes(content));
    offset_ += content.size();
    buffer_.Clear();
}

}  // namespace zu::textio
