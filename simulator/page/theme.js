// In the head and no module, so that the page is never painted in the other colours first.
"use strict";
document.documentElement.dataset.theme = localStorage.getItem("theme") ?? "auto";
