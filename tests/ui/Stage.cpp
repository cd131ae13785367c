#include "Stage.h"

#include "base/Files.h"
#include "base/Text.h"
#include "responder/BuiltInResponder.h"

#include <QtQuickTest/quicktest.h>

#include <QAccessible>
#include <QAccessibleInterface>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QImage>
#include <QKeySequence>
#include <QTest>
#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace kelvo::test {
namespace {

QtMessageHandler previousHandler = nullptr;

void hearWarnings(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if ((type == QtWarningMsg || type == QtCriticalMsg) && Stage::onWarning) {
        Stage::onWarning(message.toStdString());
    }
    if (previousHandler != nullptr) previousHandler(type, context, message);
}

void collect(QQuickItem* item, QList<QQuickItem*>& found) {
    if (!item->isVisible()) return;
    found.append(item);
    QList<QQuickItem*> children = item->childItems();
    // A list keeps its rows in the order in which it made them.
    if (item->parentItem() != nullptr && item->parentItem()->inherits("QQuickListView")) {
        std::stable_sort(children.begin(), children.end(),
                         [](const auto* a, const auto* b) { return a->y() < b->y(); });
    }
    for (QQuickItem* child : children)
        collect(child, found);
}

bool inheritsAny(const QQuickItem* item, std::initializer_list<const char*> classes) {
    return std::ranges::any_of(classes, [item](const char* each) { return item->inherits(each); });
}

bool isControl(const QQuickItem* item) {
    return inheritsAny(item, {"QQuickAbstractButton", "QQuickTextField", "QQuickComboBox"});
}

bool isText(const QQuickItem* item) {
    return inheritsAny(item, {"QQuickText", "QQuickTextEdit", "QQuickTextInput"});
}

/// What assistive technology calls a control.
QString nameOf(QQuickItem* item) {
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(item);
    return accessible == nullptr ? QString() : accessible->text(QAccessible::Name);
}

QString labelOf(const QQuickItem* item) {
    const QString text = item->property("text").toString();
    return text.isEmpty() ? item->property("placeholderText").toString() : text;
}

} // namespace

std::function<void(const std::string&)> Stage::onWarning;

Stage::Stage() {
    previousHandler = qInstallMessageHandler(hearWarnings);
    tellOfThePerson();
    lookAtTheWindow();
}

Stage::~Stage() {
    main_.reset();
    audit_.reset();
    begin_.reset();
    proof_.reset();
    view_.reset();
    qInstallMessageHandler(previousHandler);
}

void Stage::open(int width, int height) {
    world.start();
    view_ = std::make_unique<EngineView>(world.engine());
    proof_ = std::make_unique<ProofView>(world.engine(), programs);
    begin_ = std::make_unique<BeginView>(
        world.engine(), BeginView::Surroundings{.filePanel = world.filePanel,
                                                .programs = programs,
                                                .account = world.account.fullName(),
                                                .openSample = [this] { return ++samples_ > 0; }});
    audit_ = std::make_unique<AuditView>(world.engine(), programs);
    main_ = std::make_unique<MainWindow>(*view_, *proof_, *begin_, *audit_);
    world->beginProof();
    if (main_->window() == nullptr) throw std::runtime_error("the window does not load");
    window().resize(width, height);
    window().requestActivate();
    if (!QTest::qWaitForWindowActive(&window())) throw std::runtime_error("no active window");
    settle();
}

void Stage::settle() {
    for (int i = 0; i < 4; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        world.eventLoop.drain();
        QQuickTest::qWaitForPolish(&window());
    }
}

void Stage::acted() {
    if (main_ && !std::exchange(hurried_, false)) settle();
}

QList<QQuickItem*> Stage::items(QQuickItem* root) {
    QList<QQuickItem*> found;
    collect(root == nullptr ? window().contentItem() : root, found);
    return found;
}

QQuickItem& Stage::theOne(const char* className) {
    for (QQuickItem* item : items()) {
        if (item->inherits(className)) return *item;
    }
    throw std::runtime_error(std::string("no ") + className);
}

QQuickItem* Stage::find(const QString& name) {
    const auto all = items();
    const auto first = [&](auto fits) {
        const auto found = std::ranges::find_if(all, fits);
        return found == all.end() ? nullptr : *found;
    };
    if (auto* item = first([&](auto* each) { return each->objectName() == name; })) return item;
    if (auto* item = first([&](auto* each) {
            return isControl(each) && (labelOf(each) == name || nameOf(each) == name);
        }))
        return item;
    return first([&](auto* each) { return isText(each) && labelOf(each) == name; });
}

bool Stage::shows(const QString& text) {
    return std::ranges::any_of(items(), [&](auto* item) {
        return (isText(item) || isControl(item)) && labelOf(item) == text;
    });
}

void Stage::click(QQuickItem* item) {
    if (item == nullptr) throw std::runtime_error("there is no such control to click");
    item->forceActiveFocus();
    settle();
    const QPoint middle =
        item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
    if (!QRect(QPoint(), window().size()).contains(middle)) {
        throw std::runtime_error("the control to click is out of view");
    }
    QTest::mouseClick(&window(), Qt::LeftButton, Qt::NoModifier, middle);
}

void Stage::press(const QString& key) {
    const QKeyCombination keys = QKeySequence(key)[0];
    QTest::keyClick(&window(), keys.key(), keys.keyboardModifiers());
    settle();
}

void Stage::save(const std::string& name) {
    QTest::qWait(900); // for the animations to end
    const QString path = QString::fromStdString((results / (name + ".png")).string());
    if (!window().grabWindow().save(path)) throw std::runtime_error("a picture cannot be written");
}

void Stage::tellOfThePerson() {
    words["organisation"] = [this](Rest folder) {
        std::filesystem::copy(std::filesystem::path(KELVO_SOURCES) /
                                  (folder.empty() ? "tests/data/organisation" : folder),
                              world.outputs(),
                              std::filesystem::copy_options::recursive |
                                  std::filesystem::copy_options::overwrite_existing);
    };
    words["open"] = [this](Rest size) {
        const auto cross = size.find('x');
        if (size.empty()) return open();
        open(std::stoi(size.substr(0, cross)), std::stoi(size.substr(cross + 1)));
    };
    words["resize"] = [this](Rest size) {
        const auto cross = size.find('x');
        window().resize(std::stoi(size.substr(0, cross)), std::stoi(size.substr(cross + 1)));
    };
    words["click"] = [this](Rest name) { click(find(QString::fromStdString(name))); };
    // Pressed, and the next line comes before what that leads to.
    words["hit"] = [this](Rest name) {
        QMetaObject::invokeMethod(find(QString::fromStdString(name)), "clicked");
        hurried_ = true;
    };
    // Without bringing it into view first.
    words["clickThere"] = [this](Rest name) {
        const QQuickItem* item = find(QString::fromStdString(name));
        if (item == nullptr) throw std::runtime_error("there is no " + name);
        const QPointF middle = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
        QTest::mouseClick(&window(), Qt::LeftButton, Qt::NoModifier, middle.toPoint());
    };
    words["focus"] = [this](Rest name) {
        QQuickItem* item = find(QString::fromStdString(name));
        if (item == nullptr) throw std::runtime_error("there is no " + name);
        item->forceActiveFocus(Qt::TabFocusReason);
    };
    // What the desktop's own chooser of folders answers.
    words["into"] = [this](Rest folder) {
        audit_->handOver(find("recipient")->property("text").toString(),
                         QUrl::fromLocalFile(QString::fromStdString(path(folder).string())), false);
        settle();
    };
    words["press"] = [this](Rest key) { press(QString::fromStdString(key)); };
    words["hold"] = [this](Rest key) {
        const Qt::Key held = QKeySequence(QString::fromStdString(key))[0].key();
        QTest::keyPress(&window(), held);
        for (int i = 0; i < 5; ++i) {
            QKeyEvent again(QEvent::KeyPress, held, Qt::NoModifier, " ", true);
            QCoreApplication::sendEvent(&window(), &again);
        }
        QTest::keyRelease(&window(), held);
    };
    words["type"] = [this](Rest text) {
        for (const char character : text)
            QTest::keyClick(&window(), character);
    };
    words["rest"] = [](Rest) { QTest::qWait(900); };
    words["dark"] = [this](Rest yes) { main_->setDark(yes == "yes"); };
    words["scroll"] = [this](Rest name) {
        QQuickItem* scroller = find("rightScroller");
        auto* content = scroller->property("contentItem").value<QQuickItem*>();
        const double top = find(QString::fromStdString(name))->mapToItem(content, {}).y();
        const double last = scroller->property("contentHeight").toDouble() - scroller->height();
        scroller->setProperty("contentY", std::min(top - 12, last));
    };
    // What a show leaves; nothing where there is no folder for it.
    words["picture"] = [this](Rest name) {
        if (results.empty()) return;
        for (const char* shade : {"dark", "light"}) {
            main_->setDark(shade == std::string("dark"));
            save(name + "-" + shade);
        }
    };
    words["page"] = [this](Rest rest) {
        if (results.empty()) return;
        save(rest.substr(0, rest.find(' ')));
        std::printf("%s\n    %s\n", rest.substr(rest.find(' ') + 1).c_str(),
                    engine().status->c_str());
    };
    words["keep"] = [this](Rest name) {
        if (results.empty()) return;
        std::filesystem::copy(world.outputs(), results / name,
                              std::filesystem::copy_options::recursive |
                                  std::filesystem::copy_options::overwrite_existing);
    };
    words["look"] = [this](Rest) { begin_->look(); };
    words["saveUnwritten"] = [this](Rest name) {
        proof_->saveUnwritten(
            QUrl::fromLocalFile(QString::fromStdString((world.root() / name).string())));
    };
    words["respond"] = [this](Rest) {
        static const BuiltInResponder responder([] { return GroundTexts{}; });
        world.model.answer(responder.respond(world.model.requests.back()));
    };
}

void Stage::lookAtTheWindow() {
    // Every text in the order of painting, each with the symbol before it.
    figures["window"] = [this](Rest name) -> std::string {
        QQuickItem* root = name.empty() ? nullptr : find(QString::fromStdString(name));
        if (!name.empty() && root == nullptr) return "nothing";
        std::vector<std::string> texts;
        std::string symbol;
        for (const QQuickItem* item : items(root)) {
            if (item->inherits("kelvo::SymbolItem"))
                symbol = "[" + item->property("name").toString().toStdString() + "] ";
            const QString label = isText(item) ? labelOf(item) : QString();
            if (!label.isEmpty()) texts.push_back(std::exchange(symbol, "") + label.toStdString());
        }
        return joined(texts, " | ");
    };
    figures["sections"] = [this](Rest) {
        std::vector<std::string> names;
        for (const QQuickItem* item : items()) {
            const QString name = item->objectName();
            if (name.endsWith("Section")) names.push_back(name.chopped(7).toStdString());
        }
        return joined(names, " ");
    };
    // Texts that would be read as markup.
    figures["markup"] = [this](Rest) {
        std::vector<std::string> texts;
        for (const QQuickItem* item : items()) {
            const QVariant format = item->property("textFormat");
            constexpr int plain = 0; // Text.PlainText, TextEdit.PlainText
            if (format.isValid() && format.toInt() != plain)
                texts.push_back(labelOf(item).toStdString());
        }
        return joined(texts, " | ");
    };
    figures["shows"] = [this](Rest text) {
        return std::string(shows(QString::fromStdString(text)) ? "yes" : "no");
    };
    figures["is"] = [this](Rest rest) -> std::string {
        const QString name = QString::fromStdString(rest.substr(rest.find(' ') + 1));
        const QQuickItem* item = find(name);
        if (item == nullptr) return "not there";
        return item->property(rest.substr(0, rest.find(' ')).c_str()).toString().toStdString();
    };
    figures["closes"] = [this](Rest) {
        QCloseEvent asked;
        QCoreApplication::sendEvent(&window(), &asked);
        settle();
        return std::string(asked.isAccepted() ? "yes" : "no");
    };
    // "holds FILE: TEXT"
    figures["holds"] = [this](Rest rest) {
        const auto colon = rest.find(": ");
        const std::string bytes = readFile(path(rest.substr(0, colon))).value_or("");
        return std::string(bytes.find(rest.substr(colon + 2)) == bytes.npos ? "no" : "yes");
    };
    figures["samples"] = [this](Rest) { return std::to_string(samples_); };
    figures["answers"] = [this](Rest) {
        return std::string(!proof_->answers().isEmpty() && proof_->answersHold() ? "holds"
                                                                                 : "fails");
    };
    // The last file that another program was given to show.
    figures["opened"] = [this](Rest) -> std::string {
        if (programs.opened.empty()) return "nothing";
        const std::filesystem::path& file = programs.opened.back();
        return file.filename().string() + ": " + readFile(file).value_or("no file");
    };
    figures["title"] = [this](Rest) {
        const QSize least = window().minimumSize();
        return window().title().toStdString() + ", at least " + std::to_string(least.width()) +
               "x" + std::to_string(least.height());
    };
}

} // namespace kelvo::test
