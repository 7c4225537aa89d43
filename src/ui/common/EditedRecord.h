#pragma once

#include "core/Text.h"
#include "store/Record.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace Tarno
{

/// The record that an editing window works on: a private copy, and whether it holds values that have not been
/// saved.
class EditedRecord
{
public:
    /// Starts over with `record`, unchanged.
    void Begin(Record record)
    {
        m_copy = std::move(record);
        m_changed = false;
    }

    Record& Copy() { return m_copy; }

    std::string Text(std::size_t position) const { return m_copy.Text(position); }

    std::size_t Count() const { return m_copy.Count(); }

    /// The common write-back: when `text`, as it can be kept, differs from the value at `position`, replaces
    /// it and sets the changed flag. Returns whether it did. Throws Error ObjectNotSet when there is no such
    /// position.
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
