// SPDX-License-Identifier: GPL-3.0-or-later
//
// The dialogs as they would open; none is ever shown.
#include "ui/FilePanelPresenter.h"

#include "../localization/LanguageFixture.h"
#include "ui/style/TBTheme.h"

#include <QAbstractItemView>
#include <QFileDialog>
#include <QTest>

using Panel = FilePanelPresenter::Panel;

class FilePanelPresenterTest : public QObject
{
    Q_OBJECT

    LanguageFixture m_language;

    // How many entries the dialog's list and tree let the user pick.
    static QAbstractItemView::SelectionMode selection(const QFileDialog &dialog)
    {
        const auto *list = dialog.findChild<QAbstractItemView *>(u"listView"_qs);
        const auto *tree = dialog.findChild<QAbstractItemView *>(u"treeView"_qs);
        return list->selectionMode() == tree->selectionMode() ? list->selectionMode()
                                                              : QAbstractItemView::NoSelection;
    }

private Q_SLOTS:
    void eachPanelTakesWhatItShould()
    {
        m_language.manager().setSelection(AppLanguage::En);
        const auto files = FilePanelPresenter::makeDialog(Panel::Files, {u"wav"_qs, u"m4a"_qs});
        QCOMPARE(files->fileMode(), QFileDialog::ExistingFiles);
        QCOMPARE(files->nameFilters(), QStringList{u"Audio files (*.wav *.m4a)"_qs});
        const auto folders = FilePanelPresenter::makeDialog(Panel::Folders);
        QCOMPARE(folders->fileMode(), QFileDialog::Directory);
        QVERIFY(folders->testOption(QFileDialog::ShowDirsOnly));
        QCOMPARE(selection(*folders), QAbstractItemView::ExtendedSelection);
        const auto destination = FilePanelPresenter::makeDialog(Panel::Destination);
        QCOMPARE(destination->fileMode(), QFileDialog::Directory);
        QCOMPARE(selection(*destination), QAbstractItemView::SingleSelection);
        QCOMPARE(destination->labelText(QFileDialog::Accept), u"Choose"_qs);
        const auto save =
            FilePanelPresenter::makeDialog(Panel::Save, {u"csv"_qs}, u"Tonbrook Report.csv"_qs);
        QCOMPARE(save->acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(save->defaultSuffix(), u"csv"_qs);
        QCOMPARE(save->nameFilters(), QStringList{u"CSV (*.csv)"_qs});
        QCOMPARE(QFileInfo(save->selectedFiles().value(0)).fileName(), u"Tonbrook Report.csv"_qs);
        QVERIFY(!save->testOption(QFileDialog::DontConfirmOverwrite));
        // Qt's own modal dialogs, so that they can wear the window's colours.
        for (const QFileDialog *dialog :
             {files.get(), folders.get(), destination.get(), save.get()}) {
            QVERIFY(dialog->testOption(QFileDialog::DontUseNativeDialog));
            QCOMPARE(dialog->palette().color(QPalette::Window), TBTheme::panel());
            QVERIFY(dialog->isModal() && !dialog->isVisible());
        }
    }

    void panelsSpeakTheInterfaceLanguage()
    {
        m_language.manager().setSelection(AppLanguage::Ru);
        const auto russian = FilePanelPresenter::makeDialog(Panel::Destination);
        QCOMPARE(russian->windowTitle(), u"Выберите, куда сохранять подготовленное аудио"_qs);
        QCOMPARE(russian->labelText(QFileDialog::Accept), u"Выбрать"_qs);
    }
};

QTEST_MAIN(FilePanelPresenterTest)
#include "FilePanelPresenterTest.moc"
