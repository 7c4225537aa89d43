#include "DataFile.h"

#include "core/Error.h"
#include "core/Paths.h"
#include "core/Xml.h"

#include <algorithm>
#include <exception>
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
    m_path = folder.Existing(m_name);
    try {
        TakeOver(ReadWholeFile(m_path));
    } catch (const std::exception&) { // what cannot be read, or held, counts as what cannot be parsed
        Release();
    }
}

bool DataFile::TakeOver(std::string bytes)
{
    Release();
    m_bytes = std::move(bytes);
    m_ours = {SafeWriter::FingerprintOf(m_bytes)};
    if (ParseXmlInPlace(m_bytes, m_document) && m_document.child("data")) {
        return true;
    }
    Release();
    return false;
}

std::string DataFile::SavePath(const ProgramFolder& folder, const std::string& name) const
{
    std::error_code ignored;
    return std::filesystem::exists(ToPath(m_path), ignored) ? m_path : folder.Existing(name);
}

std::optional<std::string> DataFile::OtherVersion(const std::string& path) const
{
    if (m_ours.empty()) {
        return std::nullopt;
    }
    try {
        std::string bytes = ReadWholeFile(path);
        const bool isOurs =
            std::find(m_ours.begin(), m_ours.end(), SafeWriter::FingerprintOf(bytes)) != m_ours.end();
        return isOurs ? std::nullopt : std::optional(std::move(bytes));
    } catch (const Error& error) {
        if (error.Number() != ErrorNumber::FileNotFound) {
            throw;
        }
        return std::nullopt;
    }
}

std::string DataFile::Save(const std::string& path, SafeWriter& writer)
{
    m_unsaved = true;
    const std::string bytes = Bytes();
    const SafeWriter::Fingerprints known = m_ours;
    m_ours.push_back(SafeWriter::FingerprintOf(bytes)); // before it is known how far the writing comes
    std::string kept = writer.WriteOver(path, bytes, known);
    m_ours = {m_ours.back()};
    m_unsaved = false;
    return kept;
}

std::string DataFile::Bytes() const
{
    return SerializeXml(m_document);
}

void DataFile::Release()
{
    m_document.reset();
    m_bytes = {};
    m_ours.clear();
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
