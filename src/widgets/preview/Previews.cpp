#include "widgets/preview/Previews.h"

#include "core/base/PathText.h"
#include "widgets/preview/Mailbox.h"
#include "widgets/preview/PreviewMaker.h"
#include "widgets/preview/TypeIcons.h"
#include "widgets/preview/WorkQueue.h"

#include <cstdint>
#include <unordered_map>
#include <utility>

#include <QCache>
#include <QGuiApplication>
#include <QHash>
#include <QPointer>

namespace veilkeep {
namespace {

// What is known of a record.
struct Entry {
    bool isInProgress = false; // an image is being made
    bool hasNone = false;      // none could be made
    bool isTypeAsked = false;
    std::int32_t state = 0; // as they were seen last
    std::int32_t prevState = 0;
    std::shared_ptr<const ItemType> type = nullptr; // null until it is known
};

// What is being found out about a record.
struct Request {
    ListedFile file;
    std::string path;
    bool wantsImage = false;
};

struct PathRequest {
    QPointer<QObject> context;
    std::function<void(const QImage&)> done;
};

using Id = std::uint64_t;

PreviewSubject subjectOf(const File& file) {
    return {.path = std::string(file.path()), .name = std::string(file.name()), .isFolder = !file.isFile()};
}

} // namespace

class Previews::Private {
public:
    Private(Previews& owner, FileList& files, const PreviewOptions& options)
        : m_owner(owner),
          m_files(files),
          m_options(options),
          m_mailbox(std::make_shared<Mailbox>(owner)),
          m_images(options.cacheBytes),
          m_queue(options.threads, options.mostWaiting) {}
    ~Private() { m_mailbox->close(); }

    QImage preview(const ListedFile& file);
    QIcon typeIcon(const ListedFile& file);
    QString typeText(const ListedFile& file);
    void imageForPath(const std::string& path, PathRequest request);

    std::shared_ptr<const PreviewMaker> maker();
    void fileChanged(const ListedFile& file);
    void dropWhatLeftTheList();

private:
    Entry& entryOf(const ListedFile& file);
    void noteStates(Entry& entry, const File& file);
    void ask(const ListedFile& file, Entry& entry, bool wantsImage);
    void typeFound(Id id, const ItemType& type);
    void finished(Id id, const QImage& image, bool isGivenUp);
    void pathFinished(Id id, bool exists, const ItemType& type, const QImage& image);
    qreal devicePixelRatio() const;

    Previews& m_owner;
    FileList& m_files;
    const PreviewOptions m_options;
    std::shared_ptr<Mailbox> m_mailbox;
    std::shared_ptr<const PreviewMaker> m_maker; // with the first request
    TypeIcons m_icons;
    QHash<QString, std::shared_ptr<const ItemType>> m_types;
    std::unordered_map<ListedFile, Entry> m_entries;
    QCache<const File*, QImage> m_images;
    Id m_lastId = 0;
    std::unordered_map<Id, Request> m_requests;
    std::unordered_map<Id, PathRequest> m_pathRequests;
    WorkQueue m_queue; // ends first
};

std::shared_ptr<const PreviewMaker> Previews::Private::maker() {
    if (!m_maker)
        m_maker = std::make_shared<PreviewMaker>(m_options.thumbnailerLimit);
    return m_maker;
}

qreal Previews::Private::devicePixelRatio() const {
    return m_options.devicePixelRatio > 0 ? m_options.devicePixelRatio : qGuiApp->devicePixelRatio();
}

Entry& Previews::Private::entryOf(const ListedFile& file) {
    const auto [found, isNew] = m_entries.try_emplace(file);
    if (isNew)
        found->second = {.state = file->state(), .prevState = file->prevState()};
    else
        noteStates(found->second, *file);
    return found->second;
}

void Previews::Private::noteStates(Entry& entry, const File& file) {
    const bool isSet = entry.state != file.state() || entry.prevState != file.prevState();
    if (isSet && entry.prevState == File::Broken)
        m_images.remove(&file);
    entry.state = file.state();
    entry.prevState = file.prevState();
}

QImage Previews::Private::preview(const ListedFile& file) {
    Entry& entry = entryOf(file);
    if (entry.isInProgress)
        return {};
    if (const QImage* const image = m_images.object(file.get()))
        return *image;
    if (!entry.hasNone && entry.state != File::Broken)
        ask(file, entry, true);
    return {};
}

QIcon Previews::Private::typeIcon(const ListedFile& file) {
    Entry& entry = entryOf(file);
    if (!entry.isTypeAsked)
        ask(file, entry, false);
    if (entry.type)
        return m_icons.iconFor(*entry.type);
    return TypeIcons::ownIcon(file->isFile() ? ItemType::Family::File : ItemType::Family::Folder);
}

QString Previews::Private::typeText(const ListedFile& file) {
    Entry& entry = entryOf(file);
    if (!entry.isTypeAsked)
        ask(file, entry, false);
    return entry.type ? entry.type->comment : QString();
}

void Previews::Private::ask(const ListedFile& file, Entry& entry, bool wantsImage) {
    entry.isTypeAsked = true;
    entry.isInProgress = entry.isInProgress || wantsImage;
    const Id id = ++m_lastId;
    PreviewSubject subject = subjectOf(*file);
    m_requests.emplace(id, Request{.file = file, .path = subject.path, .wantsImage = wantsImage});
    const qreal ratio = devicePixelRatio();
    const auto run = [this, id, wantsImage, ratio, subject = std::move(subject), making = maker(),
                      mailbox = m_mailbox](const WorkStop& stop) {
        const OpenedItem item(subject.path);
        const ItemType type = typeOf(subject, item, stop);
        mailbox->post([this, id, type] { typeFound(id, type); });
        QImage image;
        if (wantsImage)
            image = making->imageOf(subject, item, type, {.bound = previewSize * ratio}, stop).image;
        image.setDevicePixelRatio(ratio);
        mailbox->post([this, id, image] { finished(id, image, false); });
    };
    m_queue.add({.run = run, .givenUp = [this, id] { finished(id, {}, true); }});
}

void Previews::Private::typeFound(Id id, const ItemType& type) {
    const auto request = m_requests.find(id);
    if (request == m_requests.end())
        return;
    std::shared_ptr<const ItemType>& shared = m_types[type.mimeType];
    if (!shared)
        shared = std::make_shared<ItemType>(type);
    Entry& entry = entryOf(request->second.file);
    if (entry.type == shared)
        return;
    entry.type = shared;
    emit m_owner.changed(ListedFile(request->second.file));
}

// An item that was moved meanwhile was not looked for at its place.
void Previews::Private::finished(Id id, const QImage& image, bool isGivenUp) {
    auto node = m_requests.extract(id);
    if (node.empty())
        return;
    const Request& request = node.mapped();
    Entry& entry = entryOf(request.file);
    if (isGivenUp)
        entry.isTypeAsked = entry.type != nullptr;
    if (!request.wantsImage)
        return;
    entry.isInProgress = false;
    if (isGivenUp)
        return;
    const bool isElsewhere = image.isNull() && request.file->path() != request.path;
    entry.hasNone = !isElsewhere && (image.isNull() || !m_images.insert(request.file.get(), new QImage(image),
                                                                        image.sizeInBytes()));
    emit m_owner.changed(request.file);
}

void Previews::Private::imageForPath(const std::string& path, PathRequest request) {
    const Id id = ++m_lastId;
    m_pathRequests.emplace(id, std::move(request));
    const qreal ratio = devicePixelRatio();
    const ListedFile listed = m_files.withPath(path);
    const PreviewSubject subject{.path = path,
                                 .name = std::string(listed ? listed->name() : lastPathComponent(path))};
    const auto run = [this, id, ratio, subject, making = maker(), mailbox = m_mailbox](const WorkStop& stop) {
        const OpenedItem item(subject.path);
        const ItemType type = typeOf(subject, item, stop);
        QImage image = making->imageOf(subject, item, type, {.bound = pathImageSize * ratio}, stop).image;
        image.setDevicePixelRatio(ratio);
        const bool exists = item.kind() != OpenedItem::Kind::Missing;
        mailbox->post([this, id, exists, type, image] { pathFinished(id, exists, type, image); });
    };
    m_queue.add({.run = run, .givenUp = [this, id] { m_pathRequests.erase(id); }});
}

void Previews::Private::pathFinished(Id id, bool exists, const ItemType& type, const QImage& image) {
    auto node = m_pathRequests.extract(id);
    if (node.empty() || !node.mapped().context)
        return;
    const auto icon = [&] {
        return m_icons.iconFor(type).pixmap(pathImageSize, devicePixelRatio()).toImage();
    };
    node.mapped().done(!exists || !image.isNull() ? image : icon());
}

void Previews::Private::fileChanged(const ListedFile& file) {
    if (const auto found = m_entries.find(file); found != m_entries.end())
        noteStates(found->second, *file);
}

void Previews::Private::dropWhatLeftTheList() {
    const auto isGone = [this](const ListedFile& file) { return !m_files.contains(file); };
    std::erase_if(m_requests, [&](const auto& request) { return isGone(request.second.file); });
    std::erase_if(m_entries, [&](const auto& entry) {
        if (!isGone(entry.first))
            return false;
        m_images.remove(entry.first.get());
        return true;
    });
}

Previews::Previews(FileList& files, const PreviewOptions& options)
    : m_private(std::make_unique<Private>(*this, files, options)) {
    connect(&files, &FileList::fileChanged, this,
            [this](const ListedFile& file) { m_private->fileChanged(file); });
    connect(&files, &FileList::filesRemoved, this, [this] { m_private->dropWhatLeftTheList(); });
    connect(&files, &FileList::wasAssigned, this, [this] { m_private->dropWhatLeftTheList(); });
}

Previews::~Previews() = default;

QImage Previews::preview(const ListedFile& file) {
    return file ? m_private->preview(file) : QImage();
}

QIcon Previews::typeIcon(const ListedFile& file) {
    return file ? m_private->typeIcon(file) : QIcon();
}

QString Previews::typeText(const ListedFile& file) {
    return file ? m_private->typeText(file) : QString();
}

void Previews::imageForPath(const std::string& path, QObject* context,
                            std::function<void(const QImage& image)> done) {
    m_private->imageForPath(path, {.context = context, .done = std::move(done)});
}

std::shared_ptr<const PreviewMaker> Previews::maker() const {
    return m_private->maker();
}

} // namespace veilkeep
