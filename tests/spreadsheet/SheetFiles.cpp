#include "spreadsheet/SheetFiles.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <zip.h>

namespace zolmara::test {

void WriteZip(const std::string& path, const std::vector<ZipPart>& parts) {
    int error = 0;
    zip_t* archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
    ASSERT_NE(archive, nullptr);
    for (const auto& [name, content] : parts) {
        zip_source_t* source = zip_source_buffer(archive, content.data(), content.size(), 0);
        ASSERT_GE(zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8), 0);
    }
    ASSERT_EQ(zip_close(archive), 0);
}

std::string ReadZip(const std::string& path, const std::string& part) {
    zip_t* archive = zip_open(path.c_str(), ZIP_RDONLY, nullptr);
    if (archive == nullptr) return {};
    std::string content;
    zip_stat_t stat;
    zip_file_t* file = zip_fopen(archive, part.c_str(), 0);
    if (file != nullptr && zip_stat(archive, part.c_str(), 0, &stat) == 0) {
        content.resize(stat.size);
        zip_fread(file, content.data(), content.size());
        zip_fclose(file);
    }
    zip_discard(archive);
    return content;
}

void WriteRawXlsx(const std::string& path, const std::string& sheetData, std::vector<ZipPart> more,
                  const std::string& behind) {
    const std::string main = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
    const std::string rel = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    const std::string relations =
        "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    std::vector<ZipPart> parts = {
        {"_rels/.rels", fmt::format("{}<Relationship Id=\"rId1\" Type=\"{}/officeDocument\" "
                                    "Target=\"xl/workbook.xml\"/></Relationships>",
                                    relations, rel)},
        {"xl/workbook.xml",
         fmt::format("<workbook xmlns=\"{}\" xmlns:r=\"{}\"><sheets><sheet name=\"Data\" "
                     "sheetId=\"1\" r:id=\"rId1\"/></sheets></workbook>",
                     main, rel)},
        {"xl/_rels/workbook.xml.rels",
         fmt::format("{}<Relationship Id=\"rId1\" Type=\"{}/worksheet\" "
                     "Target=\"worksheets/sheet1.xml\"/></Relationships>",
                     relations, rel)},
        {"xl/worksheets/sheet1.xml",
         fmt::format("<?xml version=\"1.0\"?>\n<worksheet xmlns=\"{}\"><sheetData>{}</sheetData>{}"
                     "</worksheet>",
                     main, sheetData, behind)}};
    for (ZipPart& part : more) {
        for (ZipPart& standing : parts)
            if (standing.first == part.first) standing.second.clear();
        std::erase_if(parts, [&](const ZipPart& known) { return known.first == part.first; });
        parts.push_back(std::move(part));
    }
    WriteZip(path, parts);
}

void WriteRawOds(const std::string& path, const std::string& rows, const std::string& doctype) {
    WriteZip(path,
             {{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
              {"content.xml",
               fmt::format("<?xml version=\"1.0\"?>{}<office:document-content xmlns:office=\"o\" "
                           "xmlns:table=\"t\" xmlns:text=\"x\"><office:body><office:spreadsheet>"
                           "<table:table table:name=\"Data\">{}</table:table></office:spreadsheet>"
                           "</office:body></office:document-content>",
                           doctype, rows)}});
}

std::string TextRow(int row, const std::vector<std::string>& cells) {
    std::string xml = fmt::format("<row r=\"{}\">", row);
    char column = 'A';
    for (const std::string& cell : cells)
        xml += fmt::format("<c r=\"{}{}\" t=\"inlineStr\"><is><t>{}</t></is></c>", column++, row,
                           cell);
    return xml + "</row>";
}

}  // namespace zolmara::test
