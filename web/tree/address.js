// What is shown, in the address: #view=pairs&grades=3,5&q=pll&signal=TR/V(OUT)/fails&sort=-abs&row=PATH, for tickets.
const readState = hash => {
  const fields = new URLSearchParams(hash.replace(/^#/, ''));
  const sort = fields.get('sort') ?? '';
  return {
    view: fields.get('view') ?? 'pairs',
    grades: fields.has('grades') ? new Set(fields.get('grades').split(',').filter(Boolean).map(Number)) : null,
    words: fields.get('q') ?? '',
    signal: fields.get('signal') ?? '',
    flapping: fields.get('flapping') === '1',
    sort: sort === '' ? null : {id: sort.replace(/^-/, ''), direction: sort.startsWith('-') ? -1 : 1},
    row: fields.get('row') ?? '',
  };
};

const addressOfState = state => {
  const fields = new URLSearchParams();
  if (state.view !== 'pairs') fields.set('view', state.view);
  if (state.grades) fields.set('grades', Array.from(state.grades).sort().join(','));
  if (state.words !== '') fields.set('q', state.words);
  if (state.signal !== '') fields.set('signal', state.signal);
  if (state.flapping) fields.set('flapping', '1');
  if (state.sort) fields.set('sort', (state.sort.direction < 0 ? '-' : '') + state.sort.id);
  if (state.row !== '') fields.set('row', state.row);
  return '#' + fields;
};
