#include "Preview/PreviewMIMEType.hpp"

#include "KnownTypes.hpp"

#include <gtest/gtest.h>

namespace corvanta {

TEST(PreviewMIMEType, KnowsTheFilesOfTheWebWithoutTheDesktop) {
    const std::map<std::string, std::string> expected{{"html", "text/html"},
                                                      {"htm", "text/html"},
                                                      {"xhtml", "application/xhtml+xml"},
                                                      {"shtml", "text/html"},
                                                      {"php", "text/html"},
                                                      {"css", "text/css"},
                                                      {"js", "text/javascript"},
                                                      {"mjs", "text/javascript"},
                                                      {"json", "application/json"},
                                                      {"map", "application/json"},
                                                      {"xml", "application/xml"},
                                                      {"txt", "text/plain"},
                                                      {"svg", "image/svg+xml"},
                                                      {"png", "image/png"},
                                                      {"jpg", "image/jpeg"},
                                                      {"jpeg", "image/jpeg"},
                                                      {"gif", "image/gif"},
                                                      {"webp", "image/webp"},
                                                      {"avif", "image/avif"},
                                                      {"ico", "image/x-icon"},
                                                      {"bmp", "image/bmp"},
                                                      {"woff", "font/woff"},
                                                      {"woff2", "font/woff2"},
                                                      {"ttf", "font/ttf"},
                                                      {"otf", "font/otf"},
                                                      {"eot", "application/vnd.ms-fontobject"},
                                                      {"mp4", "video/mp4"},
                                                      {"webm", "video/webm"},
                                                      {"mov", "video/quicktime"},
                                                      {"mp3", "audio/mpeg"},
                                                      {"ogg", "audio/ogg"},
                                                      {"wav", "audio/wav"},
                                                      {"pdf", "application/pdf"}};
    ASSERT_EQ(expected.size(), 33U);

    const KnownTypes nothing;
    for (const auto& [extension, type] : expected)
        EXPECT_EQ(PreviewMIMEType::forFile("/web/datei." + extension, nothing), type) << extension;
}

TEST(PreviewMIMEType, MindsNoCaseInTheExtension) {
    EXPECT_EQ(PreviewMIMEType::forFile("/web/BILD.PNG", KnownTypes()), "image/png");
    EXPECT_EQ(PreviewMIMEType::forFile("/web/Bild.JpEg", KnownTypes()), "image/jpeg");
}

TEST(PreviewMIMEType, AsksTheDesktopInLowerCaseForWhatTheTableLacks) {
    KnownTypes desktop;
    desktop.types["flac"] = "audio/flac";
    desktop.types["png"] = "image/x-not-asked";
    EXPECT_EQ(PreviewMIMEType::forFile("/web/a.FLAC", desktop), "audio/flac");
    EXPECT_EQ(PreviewMIMEType::forFile("/web/a.png", desktop), "image/png");
}

TEST(PreviewMIMEType, TakesTheLastExtensionOnly) {
    KnownTypes desktop;
    desktop.types["gz"] = "application/gzip";
    EXPECT_EQ(PreviewMIMEType::forFile("/web/a.tar.gz", desktop), "application/gzip");
    EXPECT_EQ(PreviewMIMEType::forFile("/web/jquery.min.js", desktop), "text/javascript");
    EXPECT_EQ(PreviewMIMEType::forFile("/web.css/LIESMICH", desktop), "application/octet-stream");
}

TEST(PreviewMIMEType, IsBytesForWhatNobodyKnows) {
    for (const char* file : {"/web/a.unbekannt", "/web/LIESMICH", "/web/a.", "/web/.htaccess", "/web/.css"})
        EXPECT_EQ(PreviewMIMEType::forFile(file, KnownTypes()), "application/octet-stream") << file;
}

} // namespace corvanta
