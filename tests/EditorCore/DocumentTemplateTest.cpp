#include "EditorCore/DocumentTemplate.hpp"

#include <gtest/gtest.h>

namespace corvanta {

TEST(DocumentTemplate, IsAGermanPageWithOneTabALevel) {
    EXPECT_EQ(DocumentTemplate::newHTML,
              "<!DOCTYPE html>\n<html>\n\t<head>\n\t\t<meta charset=\"utf-8\">\n\t\t<title>Neues "
              "Dokument</title>\n\t</head>\n\t<body>\n\n\t</body>\n</html>\n");
    EXPECT_EQ(DocumentTemplate::newHTML.size(), 123U);
}

} // namespace corvanta
