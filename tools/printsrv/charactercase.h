// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_CHARACTERCASE_H
#define PRINTSRV_CHARACTERCASE_H

namespace printsrv {

/** Case of the letters of a receipt. */
enum class ECase {
    AsIs, /**< As the template and the data have them. */
    Upper, /**< All upper case. */
    Lower, /**< All lower case. */
};

/** Registers print settings with this case, for every receipt that follows. */
void useCharacterCase(ECase letters);

} // namespace printsrv

#endif
