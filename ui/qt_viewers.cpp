#include "qt_viewers.h"

#include <QDesktopServices>
#include <QProcess>
#include <QTextBrowser>
#include <QUrl>

namespace velmora {

void QtTextViewer::Open(const std::string& path) {
    const QString file = QString::fromStdString(path);
    const QString viewer = qEnvironmentVariable("VELMORA_VIEWER");
    if (!viewer.isEmpty()) {
        QProcess::startDetached(viewer, {file});
        return;
    }
    QDesktopServices::openUrl(QUrl::fromLocalFile(file));
}

std::string QtHelpViewer::PagePath(const std::string& page) const {
    return appDirectory_ + "/help/" + page;
}

void QtHelpViewer::OpenHelpPage(const std::string& page) {
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(PagePath(page))))) {
        ShowInOwnWindow(page);
    }
}

void QtHelpViewer::ShowInOwnWindow(const std::string& page) {
    if (window_.isNull()) {
        window_ = new QTextBrowser();
        window_->setObjectName("helpWindow");
        window_->setAttribute(Qt::WA_DeleteOnClose);
        window_->setOpenExternalLinks(false);
        window_->setWindowTitle(QObject::tr("Guida in linea"));
        window_->resize(720, 560);
    }
    window_->setSource(QUrl::fromLocalFile(QString::fromStdString(PagePath(page))));
    window_->show();
    window_->raise();
}

} // namespace velmora
