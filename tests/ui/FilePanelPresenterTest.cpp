// SPDX-License-Identifier: GPL-3.0-or-later
//
// The dialogs as they would open; none is ever shown.
#include "ui/FilePanelPresenter.h"

#include "../localization/LanguageFixture.h"
#include "ui/style/TBTheme.h"

#include <QAbstractItemView>
#include <QFileDialog>
#include <QTest>

class FilePanelPresenterTest : public QObject
{
    Q_OBJECT

    LanguageFixture m_language;

private Q_SLOTS:
    void filesPanelTakesSeveralAudioFiles()
    {
        m_language.manager().setSelection(AppLanguage::En);
        const auto dialog = FilePanelPresenter::makeDialog(
            FilePanelPresenter::Panel::Files,
            {QStringLiteral("wav"), QStringLiteral("aiff"), QStringLiteral("aif"),
             QStringLiteral("mp3"), QStringLiteral("m4a"), QStringLiteral("caf")});
        QCOMPARE(dialog->fileMode(), QFileDialog::ExistingFiles);
        QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptOpen);
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Select audio files to add to the queue"));
        QCOMPARE(dialog->nameFilters(),
                 QStringList{QStringLiteral("Audio files (*.wav *.aiff *.aif *.mp3 *.m4a *.caf)")});
        QVERIFY(dialog->isModal());
        QVERIFY(!dialog->isVisible());
    }

    void folderPanelTakesSeveralFolders()
    {
        const auto dialog = FilePanelPresenter::makeDialog(FilePanelPresenter::Panel::Folders);
        QCOMPARE(dialog->fileMode(), QFileDialog::Directory);
        QVERIFY(dialog->testOption(QFileDialog::ShowDirsOnly));
        for (const char *name : {"listView", "treeView"}) {
            const auto *view = dialog->findChild<QAbstractItemView *>(QLatin1StringView(name));
            QVERIFY2(view, name);
            QCOMPARE(view->selectionMode(), QAbstractItemView::ExtendedSelection);
        }
    }

    void destinationPanelSpeaksTheInterfaceLanguage()
    {
        m_language.manager().setSelection(AppLanguage::Ru);
        const auto russian = FilePanelPresenter::makeDialog(FilePanelPresenter::Panel::Destination);
        QCOMPARE(russian->windowTitle(),
                 QStringLiteral("Выберите, куда сохранять подготовленное аудио"));
        QCOMPARE(russian->labelText(QFileDialog::Accept), QStringLiteral("Выбрать"));
        QCOMPARE(russian->fileMode(), QFileDialog::Directory);
        const auto *view = russian->findChild<QAbstractItemView *>(QStringLiteral("listView"));
        QVERIFY(view);
        QCOMPARE(view->selectionMode(), QAbstractItemView::SingleSelection);
        m_language.manager().setSelection(AppLanguage::En);
        QCOMPARE(FilePanelPresenter::makeDialog(FilePanelPresenter::Panel::Destination)
                     ->labelText(QFileDialog::Accept),
                 QStringLiteral("Choose"));
    }

    void savePanelProposesTheReport()
    {
        const auto dialog =
            FilePanelPresenter::makeDialog(FilePanelPresenter::Panel::Save, {QStringLiteral("csv")},
                                           QStringLiteral("Tonbrook Report.csv"));
        QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(dialog->defaultSuffix(), QStringLiteral("csv"));
        QCOMPARE(dialog->nameFilters(), QStringList{QStringLiteral("CSV (*.csv)")});
        QCOMPARE(QFileInfo(dialog->selectedFiles().value(0)).fileName(),
                 QStringLiteral("Tonbrook Report.csv"));
        QVERIFY(!dialog->testOption(QFileDialog::DontConfirmOverwrite));
    }

    void dialogsWearTheWindowsColours()
    {
        const auto dialog = FilePanelPresenter::makeDialog(FilePanelPresenter::Panel::Folders);
        QVERIFY(dialog->testOption(QFileDialog::DontUseNativeDialog));
        QCOMPARE(dialog->palette().color(QPalette::Base), TBTheme::bg());
        QCOMPARE(dialog->palette().color(QPalette::Text), TBTheme::text());
        QCOMPARE(dialog->palette().color(QPalette::Window), TBTheme::panel());
    }
};

QTEST_MAIN(FilePanelPresenterTest)
#include "FilePanelPresenterTest.moc"
