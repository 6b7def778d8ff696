#include "host/Component_ZLM/FileDialogs.h"

#include "host/Declaration_PKG/Specialmessages.h"
#include "host/database/SqliteFile.h"

#include <QAbstractFileIconProvider>
#include <QApplication>
#include <QFileInfo>
#include <QStyle>

#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A folder is a folder and a file a file: told by their names in the folder, never by what is in them.
class TPlainIcons : public QObject, public QAbstractFileIconProvider {
public:
    explicit TPlainIcons(QObject *owner)
        : QObject(owner), m_file(QApplication::style()->standardIcon(QStyle::SP_FileIcon)),
          m_folder(QApplication::style()->standardIcon(QStyle::SP_DirIcon)),
          m_drive(QApplication::style()->standardIcon(QStyle::SP_DriveHDIcon))
    {
        setOptions(DontUseCustomDirectoryIcons);
    }
    QIcon icon(IconType type) const override
    {
        switch (type) {
        case File:
            return m_file;
        case Drive:
        case Computer:
            return m_drive;
        default:
            return m_folder;
        }
    }
    QIcon icon(const QFileInfo &info) const override
    {
        return info.isRoot() ? m_drive : info.isDir() ? m_folder : m_file;
    }
    QString type(const QFileInfo &info) const override
    {
        return info.isDir() ? u"پوشه"_s : u"پرونده %1"_s.arg(info.suffix().toUpper()).trimmed();
    }

private:
    QIcon m_file;
    QIcon m_folder;
    QIcon m_drive;
};

QString chosen(QFileDialog &dialog)
{
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return dialog.selectedFiles().constFirst();
}

void propose(QFileDialog &dialog, const QString &name)
{
    if (name.isEmpty())
        return;
    const QFileInfo file(name);
    if (file.isAbsolute())
        dialog.setDirectory(file.absolutePath());
    dialog.selectFile(file.fileName());
}

} // namespace

QFileDialog *FileDialogs::Make(QWidget *parent, const QString &caption, const QString &filter,
                               QFileDialog::AcceptMode mode)
{
    auto *dialog = new QFileDialog(parent, caption);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    // Before the first events come: what the folder holds is shown by these only. They go after the dialog's model.
    dialog->setIconProvider(new TPlainIcons(dialog));
    dialog->setAcceptMode(mode);
    dialog->setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog->setNameFilter(filter);
    return dialog;
}

QString FileDialogs::AskToOpen(QWidget *parent, const TWanted &wanted)
{
    const std::unique_ptr<QFileDialog> dialog(
        Make(parent, wanted.caption, wanted.filter, QFileDialog::AcceptOpen));
    propose(*dialog, wanted.name);
    return chosen(*dialog);
}

QString FileDialogs::AskForName(QWidget *parent, const TWanted &wanted)
{
    const std::unique_ptr<QFileDialog> dialog(
        Make(parent, wanted.caption, wanted.filter, QFileDialog::AcceptSave));
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    propose(*dialog, wanted.name);
    return chosen(*dialog);
}

QString FileDialogs::AskToSave(QWidget *parent, const TWanted &wanted)
{
    const std::unique_ptr<QFileDialog> dialog(
        Make(parent, wanted.caption, wanted.filter, QFileDialog::AcceptSave));
    dialog->setOption(QFileDialog::DontConfirmOverwrite, !wanted.confirmReplace);
    dialog->setDefaultSuffix(wanted.suffix);
    propose(*dialog, wanted.name);
    for (;;) {
        QString file = chosen(*dialog);
        if (!SqliteFile::isHeldOpen(file))
            return file;
        ShowSmartMessage(
            u"این پرونده را خود برنامه باز دارد (پایگاه داده یا پرونده های کنار آن). نام دیگری بنویسید."_s,
            {}, miWarning);
    }
}
