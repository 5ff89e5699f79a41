// The rows of the page: pairs and signals, in columns as the program wrote them. A row is known by its number.
const GRADES = ['PASS', 'FAIL_I', 'FAIL_PV', 'FAIL_V', 'FAIL_PSV', 'FAIL_SV', 'NO_GRADE', 'NO_DATA'];
const CHANGES = ['new', 'worse', 'still', 'better', 'mended', ''];
const UNCHANGED = 5;
const HAS_REPORT = 1, HAS_PAGE = 2, HAS_TRANSCRIPT = 4, LACKS_GOLDEN = 8, LACKS_REGRESSION = 16, HIDES = 32;

const urlOf = path => path.split('/').map(encodeURIComponent).join('/');

class Pairs {
  constructor(data) {
    Object.assign(this, data);
    this.bytes = new Map(data.raw); // of paths that are no clean text, in hexadecimal
    this.texts = new Array(data.count);
  }

  folderOf(i) { return this.folders[this.folder[i]]; }
  path(i) { return this.folderOf(i) + this.name[i]; }
  has(i, flag) { return (this.flags[i] & flag) !== 0; }
  status(i) { return this.words[this.word[7 * i]]; }
  remark(i) { return this.words[this.word[7 * i + 1]]; }
  options(i) { return this.words[this.word[7 * i + 2]]; }
  goldenSuffix(i) { return this.words[this.word[7 * i + 3]]; }
  regressionSuffix(i) { return this.words[this.word[7 * i + 4]]; }
  analysis(i) { return this.words[this.word[7 * i + 5]]; }
  signal(i) { return this.words[this.word[7 * i + 6]]; }
  findings(i) { return this.has(i, HAS_REPORT) ? this.found[3 * i] + this.found[3 * i + 1] + this.found[3 * i + 2] : null; }
  abs(i) { return this.error[3 * i]; }
  rel(i) { return this.error[3 * i + 1]; }
  seconds(i) { return this.error[3 * i + 2]; }
  changeOf(i) { return this.change[2 * i]; }
  gradeBefore(i) { return this.change[2 * i + 1]; }

  url(i) {
    const bytes = this.bytes.get(i);
    if (bytes === undefined) return urlOf(this.path(i));
    return bytes.replace(/../g, '%$&').replace(/%2f/g, '/');
  }

  page(i) { return this.has(i, HAS_PAGE) ? './' + this.url(i) + '/report.html' : null; }
  transcript(i) { return this.has(i, HAS_TRANSCRIPT) ? '../transcripts/' + this.url(i) + '.txt' : null; }

  // What a filter looks through.
  text(i) {
    return this.texts[i] ??= [this.path(i), this.signal(i), this.analysis(i), this.remark(i), this.options(i)]
      .join('\n').toLowerCase();
  }
}

class Signals {
  constructor(data) {
    Object.assign(this, data);
    this.names = Array.from({length: data.count}, (_, i) => [this.analysis(i), this.name(i), this.what(i)].join('/'));
    this.numbers = new Map(this.names.map((name, i) => [name, i]));
  }

  analysis(i) { return this.words[this.word[4 * i]]; }
  name(i) { return this.words[this.word[4 * i + 1]]; }
  what(i) { return this.words[this.word[4 * i + 2]]; }
  isJudged(i) { return this.word[4 * i + 3] === 1; }
  abs(i) { return this.error[3 * i]; }
  rel(i) { return this.error[3 * i + 1]; }
  worst(i) { return this.error[3 * i + 2]; } // the number of a pair, -1 where the page leaves it out
  text(i) { return this.names[i].toLowerCase(); }

  // Numbers of the pairs, which stand there as steps from one to the next.
  pairsOf(i) {
    let at = 0;
    return new Set(this.rows[i].map(step => { at += step; return at; }));
  }
}
