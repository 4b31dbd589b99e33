// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tool/edit/editstep.h>

#include <QStringList>
#include <QWidget>

#include <functional>
#include <memory>

class QDialog;

namespace NETWEIR {
class RtlNetlist;
}

namespace TARN {
class TarnOptionWidget;
class TarnView;
} // namespace TARN

namespace TarnTest {

/// Makes the steps of "tarn edit" in a view, through its buttons, menus, dialogs and lines.
class HandEditor
{
public:
    using MakeNetlist = std::function<std::unique_ptr<NETWEIR::RtlNetlist>()>;

    /// Opens the file in a view. The program has to link the scripted extraction.
    HandEditor(const QString &filePath, const MakeNetlist &makeNetlist);
    ~HandEditor();

    /// Returns the texts of the boxes that refused the step, empty when there were none. Questions
    /// are answered with Ok.
    QStringList execute(const Tool::EditStep &step);

    /// What a save would write, checks left aside. Stores the pages.
    QByteArray storedContent();

    /// Whether the editor saves the file.
    bool save();

private:
    QList<TARN::TarnOptionWidget *> pages() const;
    QWidget *page(int core) const;
    void chooseFromMenu(int row, const QString &text);
    void click(QWidget *page, const char *button);
    void removePort(const Tool::EditStep &step);
    void editPort(const Tool::EditStep &step, const std::function<void(QDialog *)> &edit);
    void search(QDialog *dialog, const QString &name, bool wildcard);
    void choose(QDialog *dialog, const QString &name);
    void chooseUsableBits(QDialog *dialog);
    void typeValue(const Tool::EditStep &step);
    void setClock(const Tool::EditStep &step);
    void replace(const Tool::EditStep &step);
    /// Runs @p action, which may open windows.
    void meetingWindows(const std::function<void()> &action);
    void meetWindow();
    void meet(QWidget *window);

    std::unique_ptr<QWidget> m_container;
    TARN::TarnView *m_view = nullptr;
    int m_listening = 0;
    QStringList m_boxes;
    QString m_menuChoice;
    std::function<void(QDialog *)> m_onPort;
    std::function<void(QDialog *)> m_onSearch;
};

} // namespace TarnTest
