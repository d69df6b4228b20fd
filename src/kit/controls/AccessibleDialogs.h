#pragma once

/// Tells screen readers that sheets are modal, and that popovers are dialogs. To be called before the first one is
/// shown; harmless when called again.
void describeDialogsToScreenReaders();
