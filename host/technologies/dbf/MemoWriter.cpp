#include "host/technologies/dbf/MemoWriter.h"

#include "host/technologies/dbf/Dbt3Writer.h"
#include "host/technologies/dbf/Dbt4Writer.h"
#include "host/technologies/dbf/FptWriter.h"
#include "portable/error/Error.h"

namespace zu::dbf {

std::unique_ptr<MemoWriter> MemoWriter::Make(std::unique_ptr<files::File> file, MemoFormat format) {
    switch (format) {
        case MemoFormat::Fpt:
            return std::make_unique<FptWriter>(std::move(file));
        case MemoFormat::Dbt3:
            return std::make_unique<Dbt3Writer>(std::move(file));
        case MemoFormat::Dbt4:
            return std::make_unique<Dbt4Writer>(std::move(file));
        default:
            throw Error(ErrorKind::Unsupported,
                        "The file " + file->path() + " is of a kind of memo file that is not written.");
    }
}

}  // namespace zu::dbf
