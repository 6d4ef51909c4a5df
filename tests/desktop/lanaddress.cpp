// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop/lanaddress.h"

#include <QElapsedTimer>
#include <QMap>

#include <gmock/gmock.h>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

std::optional<QString> addressAmong(const QMap<QString, QString> &addresses, const QStringList &interfaces)
{
    return firstAddress(interfaces, [&](const QString &name) -> std::optional<QString> {
        return addresses.contains(name) ? std::optional(addresses.value(name)) : std::nullopt;
    });
}

TEST(LanAddress, IsTheFirstInterfacesThatHasOne)
{
    EXPECT_EQ(addressAmong({{u"en0"_s, u"192.168.1.20"_s}, {u"en1"_s, u"10.0.0.5"_s}}, {u"en0"_s, u"en1"_s}),
              u"192.168.1.20"_s);
    EXPECT_EQ(addressAmong({{u"en1"_s, u"10.0.0.5"_s}}, {u"en0"_s, u"en1"_s}), u"10.0.0.5"_s);
    EXPECT_EQ(addressAmong({{u"en0"_s, u"10.0.0.5"_s}, {u"en1"_s, u"192.168.1.20"_s}}, {u"en1"_s, u"en0"_s}),
              u"192.168.1.20"_s);
}

TEST(LanAddress, AnEmptyAnswerIsNone)
{
    EXPECT_EQ(addressAmong({{u"en0"_s, u" \n"_s}, {u"en1"_s, u"10.0.0.5\n"_s}}, {u"en0"_s, u"en1"_s}), u"10.0.0.5"_s);
    EXPECT_EQ(addressAmong({}, {u"en0"_s, u"en1"_s}), std::nullopt);
    EXPECT_EQ(addressAmong({{u"en0"_s, u"10.0.0.5"_s}}, {}), std::nullopt);
}

TEST(LanAddress, LaterInterfacesAreNotAskedOnceOneIsFound)
{
    QStringList asked;
    EXPECT_EQ(firstAddress({u"en0"_s, u"en1"_s},
                           [&](const QString &name) -> std::optional<QString> {
                               asked << name;
                               return u"10.0.0.5"_s;
                           }),
              u"10.0.0.5"_s);
    EXPECT_EQ(asked, QStringList{u"en0"_s});
}

TEST(LanAddress, OfThisComputerIsNoLoopbackAndQuicklyFound)
{
    QElapsedTimer passed;
    passed.start();
    const std::optional<QString> address = lanAddress();
    EXPECT_LT(passed.elapsed(), 500);
    if (address) {
        const unsigned first = address->section(u'.', 0, 0).toUInt();
        EXPECT_EQ(address->count(u'.'), 3) << address->toStdString();
        EXPECT_NE(first, 127U);
    }
}

} // namespace
