#pragma once

#include <QString>

class DatabaseQueue;

/// What a library means, without what differs from one run to the next: a line for each document, code and coding, by
/// names instead of identifiers and dates, sorted. Two libraries with equal digests hold the same work.
[[nodiscard]] QString digestOf(DatabaseQueue &queue);

/// What is wrong with the file as a whole, in words; empty when nothing is: SQLite's own check, codings without their
/// document or code, codes under one that isn't there, codes that are their own ancestor, things in no project.
[[nodiscard]] QString faultsOf(DatabaseQueue &queue);
