// SPDX-License-Identifier: MIT
// All figures of the page: which is the current one, and which share their stretch of x.

class Figures {
  constructor(list) {
    this.views = [];
    this.byId = new Map();
    for (const data of list) {
      const figure = document.getElementById(data.id);
      const view = new View(figure, data, changed => this.share(changed));
      view.addControls();
      this.views.push(view);
      this.byId.set(data.id, view);
      figure.addEventListener('focusin', () => { this.current = view; });
      figure.closest('details').addEventListener('toggle', () => this.opened(view));
    }
    this.current = null;
    this.stretches = new Map(); // by group, of those that were zoomed
    this.onView = () => {};
  }

  // Others of the group follow, at once where they are open, else when they are opened.
  share(changed) {
    const {low, high} = changed.picture;
    this.stretches.set(changed.data.group, [low, high]);
    const others = this.views.filter(view => view !== changed && view.zooms && view.data.group === changed.data.group);
    for (const view of others) if (isOpen(view)) view.show(low, high);
    this.onView(changed);
  }

  opened(view) {
    const stretch = this.stretches.get(view.data.group);
    if (stretch && view.zooms && isOpen(view)) view.show(...stretch);
  }

  // Opens a figure and goes there.
  goTo(view) {
    this.current = view;
    view.figure.closest('details').open = true;
    this.opened(view);
    view.figure.closest('details').scrollIntoView({block: 'start'});
    view.figure.querySelector('.drawing').focus({preventScroll: true});
  }

  // The next one for 1, the one before for -1, of those that the filter leaves.
  step(by) {
    const shown = this.views.filter(view => !view.figure.closest('details').hidden);
    const at = shown.indexOf(this.current);
    const next = shown[at < 0 ? 0 : at + by];
    if (!next) return;
    this.goTo(next);
    this.onView(next);
  }
}

const isOpen = view => view.figure.closest('details').open;
