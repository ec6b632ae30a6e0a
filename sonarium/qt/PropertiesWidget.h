#pragma once
// The property inspector on screen: the inspected objects' rows in a table, the shared value of
// several objects beside each object's own, and in-place editing of the rows the model lets
// the user change (a line for names, a list of palette colours, a text box for notes).

#include <QWidget>

class QLabel;
class QTableWidget;
class QTableWidgetItem;

namespace sn
{
class PropertiesModel;
}

namespace sn::qt
{
class QtWindowSystemDriver;

class PropertiesWidget : public QWidget
{
    Q_OBJECT

public:
    PropertiesWidget(PropertiesModel& model, QtWindowSystemDriver& driver, QWidget* parent = nullptr);
    ~PropertiesWidget() override;

    // Shows the model's rows as they are now (kept for later while a cell is being edited).
    void Refresh();
    QTableWidget* Table() const { return m_table; }
    QLabel* Heading() const { return m_heading; }
    // Sets a row's value as the user's edit does; false when the model refused it (Refused is
    // emitted with the reason).
    bool Apply(QString const& key, QString const& value);

Q_SIGNALS:
    // An edit the host did not take, and why.
    void Refused(QString const& why);

private:
    static void OnModelChanged(void* context);
    void OnItemChanged(QTableWidgetItem* item);
    void OnCellActivated(int row, int column);

    PropertiesModel& m_model;
    QtWindowSystemDriver& m_driver;
    QLabel* m_heading = nullptr;
    QTableWidget* m_table = nullptr;
    bool m_filling = false;
    bool m_refreshQueued = false;
};
} // namespace sn::qt
