// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

// The precompiled header needs a source that it is made for.
