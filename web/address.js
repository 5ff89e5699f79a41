// SPDX-License-Identifier: MIT
// What is shown, in the address: #key=KEY&x=FROM,TO, for tickets. Keys of findings are the same from run to run.

const addressOf = (key, stretch) => {
  const x = stretch ? '&x=' + stretch.join(',') : '';
  return '#key=' + encodeURIComponent(key) + x;
};

// {key, stretch} of an address; null for one that is none of these.
const readAddress = hash => {
  const match = /^#key=([^&]*)(?:&x=([^&,]+),([^&,]+))?$/.exec(hash);
  if (!match) return null;
  const stretch = match[2] === undefined ? null : [Number(match[2]), Number(match[3])];
  try {
    return {key: decodeURIComponent(match[1]), stretch: stretch?.every(Number.isFinite) ? stretch : null};
  } catch {
    return null; // a percent sign too many
  }
};

class Address {
  constructor(figures) {
    this.figures = figures;
    this.rows = new Map();
    for (const row of document.querySelectorAll('tr[data-key]')) {
      if (!this.rows.has(row.dataset.key)) this.rows.set(row.dataset.key, row);
    }
    figures.onView = view => this.write(view);
    addEventListener('hashchange', () => this.follow());
    for (const row of document.querySelectorAll('tr[data-figure]')) {
      row.querySelector('a')?.addEventListener('click', event => {
        event.preventDefault();
        this.open(row.dataset.key);
      });
    }
    this.follow();
  }

  open(key) {
    if (location.hash === addressOf(key)) this.follow();
    else location.hash = addressOf(key);
  }

  write(view) {
    const picture = view.picture;
    const isWhole = !view.zooms || picture === null ||
      (picture.low === picture.whole[0] && picture.high === picture.whole[1]);
    history.replaceState(null, '', addressOf(view.key, isWhole ? null : [picture.low, picture.high]));
  }

  follow() {
    const address = readAddress(location.hash);
    if (!address) return;
    const row = this.rows.get(address.key);
    // The table ends after so many rows, the figures go on.
    const view = row ? this.figures.byId.get(row.dataset.figure)
      : this.figures.views.find(other => other.figure.dataset.key === address.key);
    if (!view && !row) return;
    if (!view) {
      document.querySelector('tr.target')?.classList.remove('target');
      row.closest('details')?.setAttribute('open', '');
      row.scrollIntoView({block: 'center'});
      row.classList.add('target');
      return;
    }
    view.key = address.key;
    this.figures.goTo(view);
    if (address.stretch && view.zooms) view.zoom(...address.stretch);
  }
}
