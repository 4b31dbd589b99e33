// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0

// Not this one: an earlier folder has a file of that name.
wire not_here;
