#pragma once

/// Makes the images and the layouts known to the platform.
void installResources();
