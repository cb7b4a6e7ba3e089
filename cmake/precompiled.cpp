// SPDX-License-Identifier: Apache-2.0
// Precompiled headers are shared between targets and need a target of their own to belong to.
