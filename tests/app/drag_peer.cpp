// Another program's window near the lower right corner: the files that are named are dragged from it, and
// what is dragged onto it is taken. drag_peer LOG [FILE…] writes what happens into the log, a line each.

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QFile>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace {

class Peer : public QWidget {
public:
    explicit Peer(const QStringList& arguments) : m_log(arguments.at(1)) {
        if (!m_log.open(QIODevice::WriteOnly))
            qFatal("no log");
        for (const QString& path : arguments.sliced(2))
            m_dragged << QUrl::fromLocalFile(path);
        setGeometry(1250, 850, 100, 100);
        setAcceptDrops(true);
    }

protected:
    void paintEvent(QPaintEvent*) override { log("shown"); }
    void mousePressEvent(QMouseEvent* event) override { event->accept(); }
    void mouseMoveEvent(QMouseEvent*) override {
        auto* const files = new QMimeData;
        files->setUrls(m_dragged);
        auto* const drag = new QDrag(this);
        drag->setMimeData(files);
        connect(drag, &QDrag::actionChanged, this, [this](Qt::DropAction action) {
            if (action != Qt::IgnoreAction)
                log("taken");
        });
        log("done " +
            QByteArray::number(drag->exec(Qt::CopyAction | Qt::LinkAction | Qt::MoveAction, Qt::CopyAction)));
    }
    void dragEnterEvent(QDragEnterEvent* event) override {
        event->acceptProposedAction();
        log("taken");
    }
    void dropEvent(QDropEvent* event) override {
        event->acceptProposedAction();
        log("offered " + QByteArray::number(event->possibleActions().toInt()));
        log(event->mimeData()->data("text/uri-list"));
    }

private:
    void log(const QByteArray& line) {
        m_log.write(line + "\n");
        m_log.flush();
    }

    QFile m_log;
    QList<QUrl> m_dragged;
};

} // namespace

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    Peer peer(QApplication::arguments());
    peer.show();
    return QApplication::exec();
}
