/// \file
/// What the shared library offers. It hides every name but those that are declared with this word;
/// for the static library, and for whoever links to either, the word changes nothing and needs no
/// definition. `scripts/check-exports` says which public declaration lacks it.
#pragma once

/// Stands before a function or variable, and before the name of a class, that hosts may use.
#define TAMOR_EXPORT __attribute__((visibility("default")))
