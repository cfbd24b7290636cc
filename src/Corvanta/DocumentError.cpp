#include "Corvanta/DocumentError.hpp"

#include <string>

namespace corvanta {

namespace {

class DocumentErrorCategory final : public std::error_category {
public:
    const char* name() const noexcept override { return "document"; }

    std::string message(int error) const override {
        switch (static_cast<DocumentError>(error)) {
        case DocumentError::fileReadCorruptFile:
            return "not a regular file, or not readable";
        case DocumentError::fileChangedOutside:
            return "the file was changed by another program";
        case DocumentError::fileIsOpenElsewhere:
            return "the file is open in another window";
        }
        return "unknown document error";
    }
};

} // namespace

std::error_code make_error_code(DocumentError error) {
    static const DocumentErrorCategory category;
    return {static_cast<int>(error), category};
}

} // namespace corvanta
