// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/operatorview.h"
#include "dialogs/dialogs.h"
#include "shell/mainview/mainview.h"
#include "shell/mainview/sidebar.h"
#include "shell/mainwindow.h"
#include "shell/panel/menubarview.h"
#include "shell/rootview.h"
#include "states.h"
#include "ui/controls/buttons.h"
#include "ui/overlays/sheet.h"
#include "ui/parts/pill.h"
#include "ui/style/housestyle.h"
#include "ui/text/label.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListView>
#include <QProcess>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>

#include <gmock/gmock.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace test;
using testing::IsEmpty;

/// The bundled agent, which the program's own variable points at for as long as it lives.
class BundledAgent final {
public:
    explicit BundledAgent(const QString &world) : m_socket("QUILL_AGENT_SOCKET", socketPath().toLocal8Bit())
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral(QUILLFEN_LOCALAGENT),
                        {u"--world"_s, world, u"--socket"_s, socketPath(), u"--home"_s, m_folder.path()});
        EXPECT_TRUE(m_process.waitForStarted());
    }
    ~BundledAgent()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    BundledAgent(const BundledAgent &) = delete;
    BundledAgent &operator=(const BundledAgent &) = delete;

private:
    [[nodiscard]] QString socketPath() const { return m_folder.filePath(u"agent.sock"_s); }

    QTemporaryDir m_folder;
    Environment m_socket;
    QProcess m_process;
};

/// Tells when the widgets of a window have last been moved or come and gone.
class LayoutWatch final : public QObject {
public:
    LayoutWatch()
    {
        m_since.start();
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        const QEvent::Type type = event->type();
        if (type == QEvent::LayoutRequest || type == QEvent::Show || type == QEvent::Hide || type == QEvent::Resize) {
            m_since.restart();
        }
        return false;
    }

    [[nodiscard]] bool atRest() const { return m_since.elapsed() > 150; }

private:
    QElapsedTimer m_since;
};

void comeToRest()
{
    const LayoutWatch watch;
    waitFor([&] { return watch.atRest(); }, 5'000);
}

QString described(const QWidget &widget)
{
    QString name = QString::fromLatin1(widget.metaObject()->className());
    if (!widget.accessibleName().isEmpty()) {
        name += u" \""_s + widget.accessibleName().left(60) + u'"';
    } else if (const auto *const label = qobject_cast<const QLabel *>(&widget)) {
        name += u" \""_s + label->text().left(60) + u'"';
    }
    const QRect at(widget.mapTo(widget.window(), QPoint()), widget.size());
    return QStringLiteral("%1 at %2,%3 %4x%5").arg(name).arg(at.x()).arg(at.y()).arg(at.width()).arg(at.height());
}

/// What Qt makes inside its own widgets is Qt's to lay out.
bool isOurs(const QWidget &widget)
{
    for (const QWidget *each = widget.parentWidget(); each != nullptr; each = each->parentWidget()) {
        if (qobject_cast<const QLineEdit *>(each) != nullptr || qobject_cast<const QComboBox *>(each) != nullptr ||
            qobject_cast<const QAbstractItemView *>(each) != nullptr) {
            return false;
        }
    }
    return true;
}

std::vector<QWidget *> shownIn(QWidget &window)
{
    std::vector<QWidget *> shown;
    for (QWidget *const widget : window.findChildren<QWidget *>()) {
        const bool isRing = widget->objectName() == u"focusRing"_s;
        if (widget->isVisible() && !widget->isWindow() && !widget->size().isEmpty() && !isRing && isOurs(*widget)) {
            shown.push_back(widget);
        }
    }
    return shown;
}

/// A part that is sideways out of what it stands in: cut off there, or to be scrolled to.
QStringList reachingOut(QWidget &window)
{
    QStringList found;
    for (const QWidget *const widget : shownIn(window)) {
        const QRect place = widget->geometry();
        if (place.left() < 0 || place.right() >= widget->parentWidget()->width()) {
            found += described(*widget) + u" in "_s + described(*widget->parentWidget());
        }
    }
    return found;
}

bool isControlOrText(const QWidget *widget)
{
    return qobject_cast<const QAbstractButton *>(widget) != nullptr ||
           qobject_cast<const QLineEdit *>(widget) != nullptr || qobject_cast<const QComboBox *>(widget) != nullptr ||
           qobject_cast<const QLabel *>(widget) != nullptr || qobject_cast<const AgentLabel *>(widget) != nullptr ||
           qobject_cast<const Pill *>(widget) != nullptr;
}

QStringList overlapping(QWidget &window)
{
    std::vector<QWidget *> parts = shownIn(window);
    std::erase_if(parts, [](const QWidget *part) { return !isControlOrText(part) || part->visibleRegion().isEmpty(); });
    const auto place = [](const QWidget *part) {
        return part->visibleRegion().boundingRect().translated(part->mapTo(part->window(), QPoint()));
    };
    QStringList found;
    for (std::size_t one = 0; one < parts.size(); ++one) {
        for (std::size_t two = one + 1; two < parts.size(); ++two) {
            const bool inside = parts[one]->isAncestorOf(parts[two]) || parts[two]->isAncestorOf(parts[one]);
            if (!inside && place(parts[one]).intersects(place(parts[two]))) {
                found += described(*parts[one]) + u" over "_s + described(*parts[two]);
            }
        }
    }
    return found;
}

/// Texts that are not there in full and cannot be read in a tooltip either.
QStringList cutOff(QWidget &window)
{
    QStringList found;
    for (QWidget *const widget : shownIn(window)) {
        const auto *const label = qobject_cast<Label *>(widget);
        const bool isCut = label != nullptr && !label->wordWrap() && label->width() < label->sizeHint().width();
        const auto *const button = qobject_cast<Button *>(widget);
        constexpr int least = 2 * 6; // beside the words of a button that is narrower than it asks for
        const bool isSqueezed =
            button != nullptr &&
            button->width() < button->fontMetrics().horizontalAdvance(button->text()) * 8 / 10 + least;
        if ((isCut || isSqueezed) && widget->toolTip().isEmpty()) {
            found += described(*widget);
        }
    }
    return found;
}

class LayoutSweep : public testing::TestWithParam<Qt::LayoutDirection> {
protected:
    LayoutSweep()
    {
        static const bool worn = [] {
            applyHouseLook(*static_cast<QApplication *>(QCoreApplication::instance()));
            return true;
        }();
        Q_UNUSED(worn)
        QGuiApplication::setLayoutDirection(GetParam());
    }
    ~LayoutSweep() override { QGuiApplication::setLayoutDirection(Qt::LeftToRight); }

    static void check(QWidget &window, const QString &screen)
    {
        comeToRest();
        EXPECT_THAT(reachingOut(window), IsEmpty()) << screen.toStdString();
        EXPECT_THAT(overlapping(window), IsEmpty()) << screen.toStdString();
        EXPECT_THAT(cutOff(window), IsEmpty()) << screen.toStdString();
    }

    static void checkVolumes(MainWindow &window, const QString &world)
    {
        auto *const table = window.findChild<QTableView *>();
        ASSERT_NE(table, nullptr);
        for (int row = 0; row < table->model()->rowCount(); ++row) {
            table->setCurrentIndex(table->model()->index(row, 0));
            check(window, world + u": card of volume "_s + QString::number(row));
        }
    }

    static void checkTabs(MainWindow &window, const QString &world)
    {
        auto *const console = window.findChild<OperatorView *>();
        ASSERT_NE(console, nullptr);
        for (const QString &tab : {u"users"_s, u"tokens"_s, u"exports"_s}) {
            console->setTab(tab);
            check(window, world + u": operator, "_s + tab);
        }
    }

    static void checkMethod(MainWindow &window, const QString &world)
    {
        auto *const list = window.findChild<QListView *>();
        ASSERT_NE(list, nullptr);
        ASSERT_TRUE(waitFor([&] { return list->model()->rowCount() > 7; }));
        list->setCurrentIndex(list->model()->index(7, 0));
        check(window, world + u": advanced, an operation"_s);
    }

    /// What stands over the window: the sheet, a question with a long name in it, and the panel of the status area.
    static void checkWhatStandsOver(MainWindow &window, const std::shared_ptr<AppState> &state, const QString &world)
    {
        state->showNewVolume = true;
        QWidget *sheet = nullptr;
        ASSERT_TRUE(waitFor([&] { return (sheet = window.findChild<Sheet *>()) != nullptr; }));
        check(*sheet, world + u": new volume"_s);
        state->showNewVolume = false;
        bool asked = false;
        QTimer::singleShot(0, &window, [&] {
            QWidget *const dialog = QApplication::activeModalWidget();
            ASSERT_NE(dialog, nullptr);
            check(*dialog, world + u": a question"_s);
            asked = true;
            dialog->close();
        });
        EXPECT_FALSE(typedConfirm(&window, u"Retire "_s + QString(60, u'n') + u'?', u"The site is removed and wiped."_s,
                                  u"RETIRE"_s, u"Retire"_s));
        EXPECT_TRUE(asked);
        MenuBarView panel(state);
        panel.showAt({400, 20});
        check(panel, world + u": menu-bar panel"_s);
    }

    static void sweep(const QString &world)
    {
        const BundledAgent agent(world);
        const std::shared_ptr<AppState> state = AppState::create();
        MainWindow window(state);
        window.resize(960, 600);
        window.show();
        state->connect();
        ASSERT_TRUE(waitFor([&] {
            return state->signedIn() && !state->vm().empty() && window.root().mainView() != nullptr &&
                   state->statuses().size() >= static_cast<std::size_t>(state->volumes().size());
        }));
        for (const Section section : offeredSections(*state)) {
            window.root().mainView()->setSection(section);
            check(window, world + u": "_s + rawTitle(section));
            if (section == Section::Volumes) {
                checkVolumes(window, world);
            } else if (section == Section::Operator) {
                checkTabs(window, world);
            } else if (section == Section::Advanced) {
                checkMethod(window, world);
            }
        }
        checkWhatStandsOver(window, state, world);
        settle(*state);
    }
};

TEST_P(LayoutSweep, NothingIsCutOffInTheSmallestWindowWhateverTheTextSize)
{
    for (const QString &world : {u"everyday"_s, u"operator"_s, u"lists"_s, u"engine-stopped"_s}) {
        sweep(world);
    }
}

INSTANTIATE_TEST_SUITE_P(Directions, LayoutSweep, testing::Values(Qt::LeftToRight, Qt::RightToLeft));

} // namespace
} // namespace quillfen
