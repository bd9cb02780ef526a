// Parameter lists of exported functions with 0 to 29 cells, for QX_EXPORT.
#pragma once

// clang-format off
#define QX_PARAMETERS_0
#define QX_CELLS_0
#define QX_PARAMETERS_1 ::qx::OPER* c1
#define QX_CELLS_1 c1,
#define QX_PARAMETERS_2 ::qx::OPER* c1, ::qx::OPER* c2
#define QX_CELLS_2 c1, c2,
#define QX_PARAMETERS_3 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3
#define QX_CELLS_3 c1, c2, c3,
#define QX_PARAMETERS_4 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4
#define QX_CELLS_4 c1, c2, c3, c4,
#define QX_PARAMETERS_5 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5
#define QX_CELLS_5 c1, c2, c3, c4, c5,
#define QX_PARAMETERS_6 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6
#define QX_CELLS_6 c1, c2, c3, c4, c5, c6,
#define QX_PARAMETERS_7 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7
#define QX_CELLS_7 c1, c2, c3, c4, c5, c6, c7,
#define QX_PARAMETERS_8 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8
#define QX_CELLS_8 c1, c2, c3, c4, c5, c6, c7, c8,
#define QX_PARAMETERS_9 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9
#define QX_CELLS_9 c1, c2, c3, c4, c5, c6, c7, c8, c9,
#define QX_PARAMETERS_10 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10
#define QX_CELLS_10 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10,
#define QX_PARAMETERS_11 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11
#define QX_CELLS_11 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11,
#define QX_PARAMETERS_12 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12
#define QX_CELLS_12 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12,
#define QX_PARAMETERS_13 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13
#define QX_CELLS_13 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13,
#define QX_PARAMETERS_14 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13, ::qx::OPER* c14
#define QX_CELLS_14 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13, c14,
#define QX_PARAMETERS_15 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13, ::qx::OPER* c14, ::qx::OPER* c15
#define QX_CELLS_15 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13, c14, c15,
#define QX_PARAMETERS_16 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13, ::qx::OPER* c14, ::qx::OPER* c15, ::qx::OPER* c16
#define QX_CELLS_16 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13, c14, c15, c16,
#define QX_PARAMETERS_17 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13, ::qx::OPER* c14, ::qx::OPER* c15, ::qx::OPER* c16, ::qx::OPER* c17
#define QX_CELLS_17 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13, c14, c15, c16, c17,
#define QX_PARAMETERS_18 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13, ::qx::OPER* c14, ::qx::OPER* c15, ::qx::OPER* c16, ::qx::OPER* c17, ::qx::OPER* c18
#define QX_CELLS_18 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13, c14, c15, c16, c17, c18,
#define QX_PARAMETERS_19 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13, ::qx::OPER* c14, ::qx::OPER* c15, ::qx::OPER* c16, ::qx::OPER* c17, ::qx::OPER* c18, ::qx::OPER* c19
#define QX_CELLS_19 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13, c14, c15, c16, c17, c18, c19,
#define QX_PARAMETERS_20 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13, ::qx::OPER* c14, ::qx::OPER* c15, ::qx::OPER* c16, ::qx::OPER* c17, ::qx::OPER* c18, ::qx::OPER* c19, ::qx::OPER* c20
#define QX_CELLS_20 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13, c14, c15, c16, c17, c18, c19, c20,
#define QX_PARAMETERS_21 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13, ::qx::OPER* c14, ::qx::OPER* c15, ::qx::OPER* c16, ::qx::OPER* c17, ::qx::OPER* c18, ::qx::OPER* c19, ::qx::OPER* c20, ::qx::OPER* c21
#define QX_CELLS_21 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13, c14, c15, c16, c17, c18, c19, c20, c21,
#define QX_PARAMETERS_22 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13, ::qx::OPER* c14, ::qx::OPER* c15, ::qx::OPER* c16, ::qx::OPER* c17, ::qx::OPER* c18, ::qx::OPER* c19, ::qx::OPER* c20, ::qx::OPER* c21, ::qx::OPER* c22
#define QX_CELLS_22 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13, c14, c15, c16, c17, c18, c19, c20, c21, c22,
#define QX_PARAMETERS_23 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13, ::qx::OPER* c14, ::qx::OPER* c15, ::qx::OPER* c16, ::qx::OPER* c17, ::qx::OPER* c18, ::qx::OPER* c19, ::qx::OPER* c20, ::qx::OPER* c21, ::qx::OPER* c22, ::qx::OPER* c23
#define QX_CELLS_23 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13, c14, c15, c16, c17, c18, c19, c20, c21, c22, c23,
#define QX_PARAMETERS_24 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13, ::qx::OPER* c14, ::qx::OPER* c15, ::qx::OPER* c16, ::qx::OPER* c17, ::qx::OPER* c18, ::qx::OPER* c19, ::qx::OPER* c20, ::qx::OPER* c21, ::qx::OPER* c22, ::qx::OPER* c23, ::qx::OPER* c24
#define QX_CELLS_24 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13, c14, c15, c16, c17, c18, c19, c20, c21, c22, c23, c24,
#define QX_PARAMETERS_25 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13, ::qx::OPER* c14, ::qx::OPER* c15, ::qx::OPER* c16, ::qx::OPER* c17, ::qx::OPER* c18, ::qx::OPER* c19, ::qx::OPER* c20, ::qx::OPER* c21, ::qx::OPER* c22, ::qx::OPER* c23, ::qx::OPER* c24, ::qx::OPER* c25
#define QX_CELLS_25 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13, c14, c15, c16, c17, c18, c19, c20, c21, c22, c23, c24, c25,
#define QX_PARAMETERS_26 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13, ::qx::OPER* c14, ::qx::OPER* c15, ::qx::OPER* c16, ::qx::OPER* c17, ::qx::OPER* c18, ::qx::OPER* c19, ::qx::OPER* c20, ::qx::OPER* c21, ::qx::OPER* c22, ::qx::OPER* c23, ::qx::OPER* c24, ::qx::OPER* c25, ::qx::OPER* c26
#define QX_CELLS_26 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13, c14, c15, c16, c17, c18, c19, c20, c21, c22, c23, c24, c25, c26,
#define QX_PARAMETERS_27 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13, ::qx::OPER* c14, ::qx::OPER* c15, ::qx::OPER* c16, ::qx::OPER* c17, ::qx::OPER* c18, ::qx::OPER* c19, ::qx::OPER* c20, ::qx::OPER* c21, ::qx::OPER* c22, ::qx::OPER* c23, ::qx::OPER* c24, ::qx::OPER* c25, ::qx::OPER* c26, ::qx::OPER* c27
#define QX_CELLS_27 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13, c14, c15, c16, c17, c18, c19, c20, c21, c22, c23, c24, c25, c26, c27,
#define QX_PARAMETERS_28 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13, ::qx::OPER* c14, ::qx::OPER* c15, ::qx::OPER* c16, ::qx::OPER* c17, ::qx::OPER* c18, ::qx::OPER* c19, ::qx::OPER* c20, ::qx::OPER* c21, ::qx::OPER* c22, ::qx::OPER* c23, ::qx::OPER* c24, ::qx::OPER* c25, ::qx::OPER* c26, ::qx::OPER* c27, ::qx::OPER* c28
#define QX_CELLS_28 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13, c14, c15, c16, c17, c18, c19, c20, c21, c22, c23, c24, c25, c26, c27, c28,
#define QX_PARAMETERS_29 ::qx::OPER* c1, ::qx::OPER* c2, ::qx::OPER* c3, ::qx::OPER* c4, ::qx::OPER* c5, ::qx::OPER* c6, ::qx::OPER* c7, ::qx::OPER* c8, ::qx::OPER* c9, ::qx::OPER* c10, ::qx::OPER* c11, ::qx::OPER* c12, ::qx::OPER* c13, ::qx::OPER* c14, ::qx::OPER* c15, ::qx::OPER* c16, ::qx::OPER* c17, ::qx::OPER* c18, ::qx::OPER* c19, ::qx::OPER* c20, ::qx::OPER* c21, ::qx::OPER* c22, ::qx::OPER* c23, ::qx::OPER* c24, ::qx::OPER* c25, ::qx::OPER* c26, ::qx::OPER* c27, ::qx::OPER* c28, ::qx::OPER* c29
#define QX_CELLS_29 c1, c2, c3, c4, c5, c6, c7, c8, c9, c10, c11, c12, c13, c14, c15, c16, c17, c18, c19, c20, c21, c22, c23, c24, c25, c26, c27, c28, c29,
// clang-format on
