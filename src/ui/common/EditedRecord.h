#pragma once

#include "core/Text.h"
#include "store/Record.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

/// The record that an editing window works on: a private copy, with the flag that tells whether it holds
/// values that have not been handed over for saving.
class EditedRecord
{
public:
    /// Starts over with `record`, unchanged.
    void Begin(::Record record)
    {
        m_record = std::move(record);
        m_changed = false;
    }

    ::Record& Record() { return m_record; }

    std::string Text(std::size_t position) const { return m_record.Text(position); }

    /// The common write-back: when `text`, as it can be kept, differs from the value at `position`, replaces
    /// it and sets the changed flag. Returns whether it did. Throws Error ObjectNotSet when there is no such
    /// position.
    bool Store(std::size_t position, std::string_view text)
    {
        if (m_record.Text(position) == XmlText(text)) {
            return false;
        }
        m_record.SetText(position, text);
        m_changed = true;
        return true;
    }

    bool IsChanged() const { return m_changed; }

    void SetChanged(bool changed) { m_changed = changed; }

private:
    ::Record m_record;
    bool m_changed = false;
};
