// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QListView;
class QString;

namespace quillfen {

/// Makes of a list view what the house's lists of painted rows have in common: rows of one height on the window's
/// ground, one of them chosen, scrolled by the pixel and never sideways, nothing edited. The delegate paints the focus.
void dressRowsView(QListView *view, const QString &accessibleName);

} // namespace quillfen
