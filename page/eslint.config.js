import { fileURLToPath } from 'node:url';
import eslint from '@eslint/js';
import tseslint from 'typescript-eslint';

export default tseslint.config(
  { ignores: ['node_modules'] },
  eslint.configs.recommended,
  tseslint.configs.recommendedTypeChecked,
  {
    languageOptions: {
      parserOptions: {
        projectService: true,
        tsconfigRootDir: fileURLToPath(new URL('.', import.meta.url)),
      },
    },
    rules: {
      // The compiler knows what is defined.
      'no-undef': 'off',
      // All numbers that go into texts are formatted on purpose.
      '@typescript-eslint/restrict-template-expressions': ['error', { allowNumber: true }],
      // The runner awaits what its tests return.
      '@typescript-eslint/no-floating-promises': [
        'error',
        {
          allowForKnownSafeCalls: [{ from: 'package', package: 'node:test', name: ['test'] }],
        },
      ],
      'no-restricted-properties': [
        'error',
        { property: 'innerHTML', message: 'Texts are shown as texts: use textContent.' },
        { property: 'outerHTML', message: 'Texts are shown as texts: use textContent.' },
        { property: 'insertAdjacentHTML', message: 'Texts are shown as texts: use append.' },
      ],
    },
  },
  {
    // JSDoc gives a type to what JSON.parse returns, and the rule does not see it.
    files: ['tests/**/*.js'],
    rules: { '@typescript-eslint/no-unsafe-return': 'off' },
  },
);
