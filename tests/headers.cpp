// SPDX-License-Identifier: GPL-3.0-or-later
// Nothing of its own: the target that it stands in holds the headers of all tests, compiled.
