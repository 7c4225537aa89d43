#include "DataFile.h"

#include "core/Error.h"
#include "core/Paths.h"
#include "core/Xml.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace
{

pugi::xml_node Needed(const pugi::xml_node& node)
{
    if (!node) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return node;
}

} // namespace

DataFile::DataFile(std::string name) : m_name(std::move(name)) {}

void DataFile::Load(const ProgramFolder& folder)
{
    Release();
    m_path = folder.Existing(m_name);
    try {
        m_bytes = ReadWholeFile(m_path);
        if (ParseXmlInPlace(m_bytes, m_document) && m_document.child("data")) {
            return;
        }
    } catch (
        const Error&) { // NOLINT(bugprone-empty-catch): what cannot be read counts as what cannot be parsed
    }
    Release();
}

void DataFile::Save(const ProgramFolder& folder, SafeWriter& writer, const std::string& name)
{
    m_unsaved = true;
    std::error_code ignored;
    const bool isThere = std::filesystem::exists(ToPath(m_path), ignored);
    writer.Write(isThere ? m_path : folder.Existing(name), SerializeXml(m_document));
    m_unsaved = false;
}

void DataFile::Release()
{
    m_document.reset();
    m_bytes = {};
    m_unsaved = false;
}

pugi::xml_node DataFile::Container() const
{
    return Needed(m_document.first_child());
}

pugi::xml_node DataFile::Data() const
{
    return Needed(m_document.child("data"));
}
