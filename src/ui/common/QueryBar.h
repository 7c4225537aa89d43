#pragma once

#include "analysis/Query.h"
#include "analysis/QueryCompletion.h"

#include <QWidget>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace Tarno
{

namespace Ui
{
class QueryBar;
}

/// A bar in which the user types a query. Words and values are completed, faults are explained below the box,
/// and the count of what was found is shown beside it. The bar is hidden until it is opened.
class QueryBar : public QWidget
{
    Q_OBJECT

public:
    explicit QueryBar(QWidget* parent = nullptr);
    QueryBar(const QueryBar&) = delete;
    QueryBar& operator=(const QueryBar&) = delete;
    ~QueryBar() override;

    /// Shows the bar, focuses the box and selects its text.
    void Open();
    /// Shows the bar with that query.
    void Search(const QString& query);
    /// Hides the bar and clears the query.
    void Close();

    /// Returns the query, which has no terms while the bar is closed.
    const Query& CurrentQuery() const { return m_query; }

    QString Text() const;

    /// Shows how many of `all` trips are found. `kept` more trips are shown although they are not found.
    void ShowCount(std::size_t found, std::size_t all, std::size_t kept);

    /// Sets the function that creates the completion from the trips of the log.
    void SetCompletion(std::function<QueryCompletion()> create) { m_createCompletion = std::move(create); }

    /// Creates the completion again before it is used next. Call this after every change of the log.
    void ForgetTrips() { m_completion.reset(); }

Q_SIGNALS:
    void QueryChanged();
    /// The user wants to go to what was found.
    void Entered();
    void HelpRequested();
    void Closed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ReadQuery();

    std::unique_ptr<Ui::QueryBar> m_ui;
    Query m_query;
    std::function<QueryCompletion()> m_createCompletion;
    std::optional<QueryCompletion> m_completion;
};

} // namespace Tarno
