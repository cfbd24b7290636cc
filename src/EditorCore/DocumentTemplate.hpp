#pragma once

#include <string_view>

namespace corvanta {

/// The text that every new document starts with.
struct DocumentTemplate {
    DocumentTemplate() = delete;

    static constexpr std::string_view newHTML = "<!DOCTYPE html>\n"
                                                "<html>\n"
                                                "\t<head>\n"
                                                "\t\t<meta charset=\"utf-8\">\n"
                                                "\t\t<title>Neues Dokument</title>\n"
                                                "\t</head>\n"
                                                "\t<body>\n"
                                                "\n"
                                                "\t</body>\n"
                                                "</html>\n";
};

} // namespace corvanta
