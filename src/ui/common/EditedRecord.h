#pragma once

#include "core/Text.h"
#include "store/ImportBatch.h"
#include "store/Record.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace Tarno
{

/// The private copy of a record that an editing window works on, and the changed flag: whether the copy has
/// unsaved values.
class EditedRecord
{
public:
    /// Replaces the copy with `record` and clears the changed flag.
    void Begin(Record record)
    {
        m_copy = std::move(record);
        m_changed = false;
    }

    Record& Copy() { return m_copy; }

    std::string Text(std::size_t position) const { return m_copy.Text(position); }

    std::size_t Count() const { return m_copy.Count(); }

    StoredTexts Texts() const
    {
        StoredTexts texts;
        for (std::size_t position = 0; position < Count(); ++position) {
            texts.push_back(Text(position));
        }
        return texts;
    }

    /// Stores `text`, cleaned by XmlText, at `position`. If the value differs, sets the changed flag and
    /// returns true. Throws Error ObjectNotSet if the record has no value at `position`.
    bool Store(std::size_t position, std::string_view text)
    {
        if (m_copy.Text(position) == XmlText(text)) {
            return false;
        }
        m_copy.SetText(position, text);
        m_changed = true;
        return true;
    }

    bool IsChanged() const { return m_changed; }

    void SetChanged(bool changed) { m_changed = changed; }

private:
    Record m_copy;
    bool m_changed = false;
};

} // namespace Tarno
